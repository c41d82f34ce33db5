#pragma once

#include "vynhost/EditorWindow.h"

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
    Window content = 0; ///< the plug-in's own, the one that was heard of last
    WindowSize contentSize = {};

    /// What an event says of the own window and of those inside. True when the own window has another size than it
    /// should.
    /// [main-thread]
    bool Note(XEvent const& event);

private:
    void NoteContent(Window inside, int width, int height);
    void NoteMove(XReparentEvent const& event);
    void NoteEnd(Window gone);
};

} // namespace vynhost
