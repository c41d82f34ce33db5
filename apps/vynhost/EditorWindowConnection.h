#pragma once

#include "vynhost/EditorWindow.h"

#include <map>
#include <X11/Xlib.h>

namespace vynhost {

/// What an EditorWindow holds of the display.
struct EditorWindow::Connection {
    Display* display = nullptr;
    int screen = 0;
    Window window = 0;
    Atom protocols = 0;
    Atom deletion = 0;
    WindowSize size = kStartSize;
    int corrections = 0; ///< of the size, since it was set last
    bool closed = false;
    bool destroyed = false;
    std::map<Window, WindowSize> contents; ///< the plug-in's own

    /// What an event says of the own window and of those inside. True when the own window has another size than it
    /// should.
    /// [main-thread]
    bool Note(XEvent const& event);

    /// Of the largest of the plug-in's windows; some put small ones for menus and tips beside it.
    /// [main-thread]
    std::optional<WindowSize> FindContentSize() const noexcept;

private:
    void NoteMove(XReparentEvent const& event);
    void NoteEnd(Window gone);
};

} // namespace vynhost
