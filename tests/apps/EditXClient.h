#pragma once

#include "vynhost/EditorWindow.h"

#include <memory>
#include <string>

namespace vyntest {

/// A connection of its own with the display that the environment names, as a plug-in or a window manager has one. It
/// lives through the end of the display.
class EditXClient {
public:
    using Window = unsigned long;

    /// Throws std::runtime_error when the display can't be opened.
    /// [main-thread]
    EditXClient();
    EditXClient(EditXClient const&) = delete;
    EditXClient& operator=(EditXClient const&) = delete;
    /// [main-thread]
    ~EditXClient();

    /// As AudioFilterEditors are given windows.
    /// [main-thread]
    static Window FromHandle(void* handle) { return reinterpret_cast<Window>(handle); }

    /// A visible window of one colour, 0xRRGGBB.
    /// [main-thread]
    Window MakeChild(Window parent, vynhost::WindowSize size, unsigned long colour);

    /// [main-thread]
    void Resize(Window window, vynhost::WindowSize size);

    /// [main-thread]
    void Destroy(Window window);

    /// [main-thread]
    vynhost::WindowSize GetSize(Window window);

    /// The size that a window manager is told to keep; 0 by 0 when it may be changed.
    /// [main-thread]
    vynhost::WindowSize GetFixedSize(Window window);

    /// The first child of the root window whose name is this; 0 when there is none.
    /// [main-thread]
    Window Find(std::string const& name);

    /// What a window manager does when the user closes a window.
    /// [main-thread]
    void SendClose(Window window);

    /// Asks something of a window that isn't there.
    /// [main-thread]
    void Err();

    /// Breaks the connection, and finds out. The thread is the one that ends it as well: others would wait for ever.
    /// [main-thread]
    void Break();

    /// Puts the handlers of the whole process back to those that end it.
    /// [main-thread]
    static void ForgetHandlers();

private:
    struct Connection;

    std::unique_ptr<Connection> mConnection;
};

} // namespace vyntest
