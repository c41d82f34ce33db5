#pragma once

#include "vynhost/Outcome.h"

#include <atomic>
#include <string>
#include <thread>

namespace vynhost {

class EditedState;

/// Ends the program when the display has gone while a plug-in's editor is open, and keeps what can be kept. Nothing of
/// the plug-in is taken down: its connection with the display has gone too, and few plug-ins live through using it.
class EditRescue {
public:
    /// @param json  in which form the failure is reported
    /// [main-thread]
    explicit EditRescue(bool json);

    /// What is saved at the end; null for nothing. It belongs to the caller.
    /// [main-thread]
    void Keep(EditedState* state) noexcept { mState = state; }

    /// Nothing is lost from now on: all that is left is to take the plug-in down. A display that goes away then ends
    /// the process in good order.
    /// [main-thread]
    void Finish() noexcept { mFinished = true; }

    /// Saves the state, reports the loss and ends the process with the status of a failure. Another thread than the
    /// main thread wakes that one, leaves it all to it for a while, and then ends the process without a saved state. So
    /// it goes as well when the plug-in gives its state neither soon nor without the display.
    /// [any-thread]
    [[noreturn]] void Leave() noexcept;

private:
    std::string Save();
    [[noreturn]] void Report(std::string const& state) noexcept;
    [[noreturn]] void GiveUpLater() noexcept;

    FailureForm const mForm;
    std::thread::id const mMainThread = std::this_thread::get_id();
    std::atomic<EditedState*> mState = nullptr;
    std::atomic<bool> mFinished = false;
    std::atomic<bool> mLeaving = false;
    std::atomic<bool> mReported = false;
};

} // namespace vynhost
