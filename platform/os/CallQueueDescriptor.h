#pragma once

#include <cstdint>
#include <set>
#include <vector>

namespace os {

/// Something an event loop of the system can wait for that wakes it at a set time, or when one of other descriptors is
/// ready: one alarm, owned by whoever made it. It never runs anything and starts no thread.
class CallQueueDescriptor {
public:
    /// Asks the system for the descriptor, unarmed. When there is none to have the handle is -1 and Arm does nothing.
    /// [any-thread]
    CallQueueDescriptor() noexcept;

    /// Gives the descriptor back; nobody may wait for it any more.
    /// [any-thread]
    ~CallQueueDescriptor();

    CallQueueDescriptor(CallQueueDescriptor const&) = delete;
    CallQueueDescriptor& operator=(CallQueueDescriptor const&) = delete;

    /// What to wait for: readable from the armed time on. -1 when there is none. Stays the same for life.
    /// [any-thread]
    std::intptr_t Handle() const noexcept { return mHandle; }

    /// Sets the alarm to a time of os::GetMonotonicNanos in place of the one before; unreadable until then, and at
    /// once readable for a time that lies behind. Two threads don't call it at once.
    /// [any-thread]
    void Arm(std::uint64_t dueNanos) noexcept;

    /// Takes the alarm back: unreadable until the next Arm.
    /// [any-thread]
    void Disarm() noexcept;

    /// Makes the handle readable while this descriptor, which is somebody else's, is. A second time it does nothing.
    /// False when the system can't watch it. Of one that is closed without Unwatch nothing is told any more, once that
    /// is noticed.
    /// [main-thread]
    bool Watch(std::intptr_t descriptor) noexcept;
    /// [main-thread]
    void Unwatch(std::intptr_t descriptor) noexcept;

    struct Ready {
        std::intptr_t descriptor;
        bool hungUp;   ///< nothing new will ever come from it
        int available; ///< bytes that wait to be read, as far as the system says
    };

    /// The watched descriptors that are readable now. Waits for none.
    /// [main-thread]
    std::vector<Ready> GetReady();

private:
    void Set(std::uint64_t dueNanos) noexcept;
    bool AddWatch(std::intptr_t descriptor);
    void RenewPoller();

    std::intptr_t mTimer = -1;
    std::intptr_t mPoller = -1; ///< of the watched descriptors
    std::set<std::intptr_t> mWatched;
    std::intptr_t mHandle = -1;
    std::uint64_t mArmedFor = 0;
};

} // namespace os
