#pragma once

#include "vyncore/threads/MainThreadCalls.h"

#include <chrono>

#include <poll.h>

namespace vyntest {

/// Whether the call queue's descriptor is readable within so many milliseconds.
/// [any-thread]
inline bool IsCallQueueReady(int milliseconds = 0) {
    pollfd queue{static_cast<int>(vyncore::threads::GetCallQueueDescriptor()), POLLIN, 0};
    return poll(&queue, 1, milliseconds) == 1 && (queue.revents & POLLIN) != 0;
}

/// Runs the main thread's calls as an application's loop does until the condition holds; false when it takes too long.
/// [main-thread]
template <class Condition>
bool RunCallsUntil(Condition const& condition) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        IsCallQueueReady(100);
        vyncore::threads::RunDueCalls();
    }
    return true;
}

/// Runs the main thread's calls that become due within so many milliseconds, as many of them as there are.
/// [main-thread]
inline void RunCallsFor(unsigned milliseconds) {
    bool over = false;
    vyncore::threads::AsyncCallFromMainThread([&over] { over = true; }, milliseconds);
    RunCallsUntil([&over] { return over; });
}

} // namespace vyntest
