#pragma once

#include "vynhost/EditorWindow.h"

#include <memory>
#include <string>

namespace vyntest {

/// A connection of its own with the display that the environment names, as a plug-in or a window manager has one. It
/// lives through the end of the display.
/// [main-thread]
class EditXClient {
public:
    using Window = unsigned long;

    /// Throws std::runtime_error when the display can't be opened.
    EditXClient();
    EditXClient(EditXClient const&) = delete;
    EditXClient& operator=(EditXClient const&) = delete;
    ~EditXClient();

    /// As AudioFilterEditors are given windows.
    static Window FromHandle(void* handle) { return reinterpret_cast<Window>(handle); }

    /// A visible window of one colour, 0xRRGGBB. A parent of 0 is the screen.
    Window MakeChild(Window parent, vynhost::WindowSize size, unsigned long colour);

    void Resize(Window window, vynhost::WindowSize size);
    void Destroy(Window window);
    vynhost::WindowSize GetSize(Window window);

    /// The size that a window manager is told to keep; 0 by 0 when it may be changed.
    vynhost::WindowSize GetFixedSize(Window window);

    /// The first child of the root window whose name is this; 0 when there is none.
    Window Find(std::string const& name);

    /// What a window manager does when the user closes a window.
    void SendClose(Window window);

    /// Asks something of a window that isn't there.
    void Err();

    /// Breaks the connection, and finds out. The thread is the one that ends it as well: others would wait for ever.
    void Break();

    /// Puts the handlers of the whole process back to those that end it.
    static void ForgetHandlers();

private:
    struct Connection;

    std::unique_ptr<Connection> mConnection;
};

} // namespace vyntest
