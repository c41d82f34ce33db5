#include "vynaudiofilterhost/MainThread.h"

#include "vyncore/threads/Threads.h"

#include <atomic>

namespace vynaudiofilterhost {

namespace {

// Relaxed throughout: the number itself is all that is passed on, no other data hangs on it.
constinit std::atomic<unsigned> theMainThreadID{0};

} // namespace

unsigned GetMainThreadID() noexcept {
    return theMainThreadID.load(std::memory_order_relaxed);
}

bool CurrentThreadIDIsMainThreadID() noexcept {
    return vyncore::threads::GetCurrentThreadID() == GetMainThreadID();
}

void SetMainThreadToCurrentThread() noexcept {
    theMainThreadID.store(vyncore::threads::GetCurrentThreadID(), std::memory_order_relaxed);
}

} // namespace vynaudiofilterhost
