#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace os {
class InterruptDescriptor;
}

namespace vynhost {

class EditFrame;
class EditorWindow;
class XErrors;

/// Why an editing has come to its end.
enum class EditEnd { kWindowClosed, kInterrupted, kTimeUp, kDisplayLost };

/// The main loop while an editor is open: the window's events, the library's call queue, the editor's idle time. It
/// waits for whatever comes first and is idle in between. It refers to what it is given and owns nothing.
class EditLoop {
public:
    /// @param eachTurn  called after each turn, at least once every idle period
    /// [main-thread]
    EditLoop(EditorWindow& window, EditFrame& frame, XErrors& errors, os::InterruptDescriptor const& interrupt,
             std::function<void()> eachTurn);

    /// Runs until the window is closed, the program is wanted to end, or a time of os::GetMonotonicNanos. Throws what
    /// the plug-in throws. When a connection with the display is broken, the plug-in's or the window's, no more of the
    /// plug-in's code is called.
    /// [main-thread]
    EditEnd Run(std::optional<std::uint64_t> deadlineNanos);

private:
    std::optional<EditEnd> FindEnd(std::optional<std::uint64_t> deadlineNanos) const;
    void TakeTurn();
    void Wait(std::optional<std::uint64_t> deadlineNanos) const;

    EditorWindow& mWindow;
    EditFrame& mFrame;
    XErrors& mErrors;
    os::InterruptDescriptor const& mInterrupt;
    std::function<void()> mEachTurn;
    std::uint64_t mNextIdleNanos = 0;
};

} // namespace vynhost
