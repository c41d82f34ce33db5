#pragma once

#include "vynhost/Screenshot.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vynhost {

class XErrors;

/// The extent of a window's inside, in pixels.
struct WindowSize {
    int width = 0;
    int height = 0;

    friend bool operator==(WindowSize const&, WindowSize const&) = default;
};

/// A window on the user's display for a plug-in to put its own window into. It has the size that it is given: a user
/// can't change that, because a plug-in isn't asked to follow.
///
/// Life: made invisible; Show; HandleEvents whenever the descriptor is readable, and before anybody waits for it. The
/// plug-in's window is taken out before the object goes.
class EditorWindow {
public:
    static constexpr WindowSize kStartSize{640, 480};
    /// The largest width and height.
    static constexpr int kMostPixels = 16384;

    /// Connects with the display that the environment names. Throws CommandError when there is none.
    /// @param errors  must outlive the object
    /// [main-thread]
    explicit EditorWindow(XErrors& errors);
    EditorWindow(EditorWindow const&) = delete;
    EditorWindow& operator=(EditorWindow const&) = delete;
    /// [main-thread]
    ~EditorWindow();

    /// [main-thread]
    void SetTitle(std::string const& title);

    /// A size that no window has changes nothing and gives false.
    /// [main-thread]
    bool SetSize(WindowSize size);

    /// As it was set last.
    /// [main-thread]
    WindowSize GetSize() const noexcept;

    /// [main-thread]
    void Show();

    /// Puts the window above others, as far as the window manager lets it.
    /// [main-thread]
    void Raise();

    /// What a plug-in takes as its parent window.
    /// [main-thread]
    void* GetHandle() const noexcept;

    /// For os::WaitForDescriptors.
    /// [main-thread]
    std::intptr_t GetDescriptor() const noexcept;

    /// Takes in what has happened, and sends what is to be done. Doesn't wait; of very much it leaves some for the next
    /// time.
    /// [main-thread]
    void HandleEvents();

    /// Whether the user has closed the window, or somebody has destroyed it.
    /// [main-thread]
    bool IsClosed() const noexcept;

    /// Whether the connection with the display is broken; nothing can be shown any more then.
    /// [main-thread]
    bool IsLost() const noexcept;

    /// The size of the window that the plug-in has put inside, of several the largest; empty when there is none.
    /// Changes in HandleEvents.
    /// [main-thread]
    std::optional<WindowSize> GetContentSize() const noexcept;

    /// What is to be seen in the window, the plug-in's own included; what lies beyond the screen is black, and what
    /// other windows cover is anything. Empty when the display gives nothing.
    /// [main-thread]
    std::optional<Screenshot> TakeScreenshot();

private:
    struct Connection;

    void Resize();

    XErrors& mErrors;
    std::unique_ptr<Connection> mConnection;
};

} // namespace vynhost
