#include "vyncore/threads/MainThreadCalls.h"

#include "os/CallQueueDescriptor.h"
#include "os/Clock.h"
#include "vyncore/threads/DescriptorWatches.h"

#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace vyncore::threads {
namespace {

class CallQueue {
public:
    void File(std::function<void()>&& call, std::uint64_t delayNanos);
    int RunDue();
    std::optional<std::uint64_t> NextDue();
    std::intptr_t Descriptor();
    DescriptorWatches& Watches() { return mWatches; }
    os::CallQueueDescriptor& GetDescriptor();

private:
    struct FiledCall {
        std::uint64_t number;
        std::function<void()> run;
    };

    // By due time; a multimap keeps the order of filing among equal ones.
    using Calls = std::multimap<std::uint64_t, FiledCall>;

    Calls::node_type TakeDue(std::uint64_t now, std::uint64_t endNumber);
    int RunReady();
    void Rearm();

    std::mutex mMutex;
    Calls mCalls;
    std::uint64_t mNextNumber = 0;
    std::unique_ptr<os::CallQueueDescriptor> mDescriptor;
    DescriptorWatches mWatches; ///< main thread
};

void CallQueue::File(std::function<void()>&& call, std::uint64_t delayNanos) {
    std::lock_guard const lock(mMutex);
    // The clock is read under the lock, so that calls with equal delays become due in the order of filing.
    auto const filed = mCalls.emplace(os::GetMonotonicNanos() + delayNanos, FiledCall{mNextNumber, std::move(call)});
    ++mNextNumber;
    if (filed == mCalls.begin())
        Rearm();
}

int CallQueue::RunDue() {
    std::unique_lock lock(mMutex);
    std::uint64_t const now = os::GetMonotonicNanos();
    std::uint64_t const endNumber = mNextNumber;
    lock.unlock();

    struct RearmAtEnd {
        CallQueue& queue;
        ~RearmAtEnd() {
            std::lock_guard const lock(queue.mMutex);
            queue.Rearm();
        }
    } const rearmAtEnd{*this};

    int count = 0;
    // One at a time, so that a call that throws, or runs a loop of its own, leaves the others where they can be found.
    while (Calls::node_type const due = TakeDue(now, endNumber)) {
        ++count;
        due.mapped().run();
    }
    return count + RunReady();
}

int CallQueue::RunReady() {
    std::unique_lock lock(mMutex);
    os::CallQueueDescriptor* const poller = mDescriptor.get();
    lock.unlock();
    return poller ? mWatches.RunReady(*poller) : 0;
}

CallQueue::Calls::node_type CallQueue::TakeDue(std::uint64_t now, std::uint64_t endNumber) {
    std::lock_guard const lock(mMutex);
    // What was filed since can't lie before what was there: it is due at `now` at the earliest.
    auto const first = mCalls.begin();
    bool const due = first != mCalls.end() && first->first <= now && first->second.number < endNumber;
    return due ? mCalls.extract(first) : Calls::node_type();
}

std::optional<std::uint64_t> CallQueue::NextDue() {
    std::lock_guard const lock(mMutex);
    return mCalls.empty() ? std::nullopt : std::optional(mCalls.begin()->first);
}

std::intptr_t CallQueue::Descriptor() {
    return GetDescriptor().Handle();
}

os::CallQueueDescriptor& CallQueue::GetDescriptor() {
    std::lock_guard const lock(mMutex);
    // Made when somebody asks: an application that goes by NextDueNanos pays for no alarm.
    if (!mDescriptor) {
        mDescriptor = std::make_unique<os::CallQueueDescriptor>();
        Rearm();
    }
    return *mDescriptor;
}

void CallQueue::Rearm() {
    if (!mDescriptor)
        return;
    if (mCalls.empty())
        mDescriptor->Disarm();
    else
        mDescriptor->Arm(mCalls.begin()->first);
}

// Never destroyed: static objects may file calls while the process ends.
CallQueue& Queue() {
    static CallQueue& queue = *new CallQueue;
    return queue;
}

} // namespace

bool AsyncCallFromMainThread(std::function<void()> call, unsigned milliseconds) noexcept {
    if (!call)
        return false;
    try {
        Queue().File(std::move(call), std::uint64_t{milliseconds} * 1'000'000);
        return true;
    } catch (...) {
        return false;
    }
}

int RunDueCalls() {
    return Queue().RunDue();
}

std::optional<std::uint64_t> NextDueNanos() {
    return Queue().NextDue();
}

std::uint64_t WatchDescriptor(std::intptr_t descriptor, std::function<void()> call) noexcept {
    try {
        return Queue().Watches().Add(Queue().GetDescriptor(), descriptor, std::move(call));
    } catch (...) {
        return 0;
    }
}

void UnwatchDescriptor(std::uint64_t watch) noexcept {
    try {
        Queue().Watches().Remove(Queue().GetDescriptor(), watch);
    } catch (...) {
        // No descriptor can be made: then nothing was ever watched.
    }
}

std::intptr_t GetCallQueueDescriptor() {
    return Queue().Descriptor();
}

} // namespace vyncore::threads
