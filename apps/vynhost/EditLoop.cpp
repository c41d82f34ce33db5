#include "vynhost/EditLoop.h"

#include "vynhost/EditFrame.h"
#include "vynhost/EditorWindow.h"
#include "vynhost/Session.h"
#include "vynhost/XErrors.h"

#include "vyncore/threads/MainThreadCalls.h"

#include "os/Clock.h"
#include "os/InterruptDescriptor.h"
#include "os/WaitForDescriptors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vynhost {

namespace {

constexpr std::uint64_t kIdleNanos = 30'000'000;

} // namespace

EditLoop::EditLoop(EditorWindow& window, EditFrame& frame, XErrors& errors, os::InterruptDescriptor const& interrupt,
                   std::function<void()> eachTurn)
    : mWindow(window), mFrame(frame), mErrors(errors), mInterrupt(interrupt), mEachTurn(std::move(eachTurn)) {}

EditEnd EditLoop::Run(std::optional<std::uint64_t> deadlineNanos) {
    while (true) {
        // Ahead of the plug-in's code: a display that has gone shows here and not there.
        mWindow.HandleEvents();
        if (std::optional<EditEnd> const end = FindEnd(deadlineNanos))
            return *end;
        TakeTurn();
        // Answers that the calls of this turn have read in make the descriptor readable no more.
        mWindow.HandleEvents();
        if (!FindEnd(deadlineNanos))
            Wait(deadlineNanos);
    }
}

std::optional<EditEnd> EditLoop::FindEnd(std::optional<std::uint64_t> deadlineNanos) const {
    if (mErrors.IsAnyConnectionLost())
        return EditEnd::kDisplayLost;
    if (mWindow.IsClosed())
        return EditEnd::kWindowClosed;
    if (mInterrupt.WasInterrupted())
        return EditEnd::kInterrupted;
    if (deadlineNanos && os::GetMonotonicNanos() >= *deadlineNanos)
        return EditEnd::kTimeUp;
    return std::nullopt;
}

void EditLoop::TakeTurn() {
    mErrors.Reclaim();
    mFrame.Follow();
    Session::RunDueCalls();
    if (std::uint64_t const now = os::GetMonotonicNanos(); now >= mNextIdleNanos) {
        mFrame.Idle();
        mNextIdleNanos = now + kIdleNanos;
    }
    mEachTurn();
}

void EditLoop::Wait(std::optional<std::uint64_t> deadlineNanos) const {
    std::array const descriptors{mWindow.GetDescriptor(), vyncore::threads::GetCallQueueDescriptor(),
                                 mInterrupt.Handle()};
    os::WaitForDescriptors(descriptors, std::min(mNextIdleNanos, deadlineNanos.value_or(mNextIdleNanos)));
}

} // namespace vynhost
