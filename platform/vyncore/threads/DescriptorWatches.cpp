#include "vyncore/threads/DescriptorWatches.h"

#include <algorithm>
#include <utility>

namespace vyncore::threads {

namespace {

// Whoever takes nothing in so many turns, and knows of the end no better, never will.
constexpr int kMostHangUps = 64;

} // namespace

std::uint64_t DescriptorWatches::Add(os::CallQueueDescriptor& poller, std::intptr_t descriptor,
                                     std::function<void()> call) {
    if (!call)
        return 0;
    auto shared = std::make_shared<std::function<void()> const>(std::move(call));
    // Asked even when it is watched: a descriptor of that number may have been closed since, and be another now.
    if (!poller.Watch(descriptor))
        return 0;
    mWatches.emplace(++mLastNumber, Watch{descriptor, std::move(shared)});
    return mLastNumber;
}

void DescriptorWatches::Remove(os::CallQueueDescriptor& poller, std::uint64_t number) noexcept {
    auto const found = mWatches.find(number);
    if (found == mWatches.end())
        return;
    std::intptr_t const descriptor = found->second.descriptor;
    mWatches.erase(found);
    if (!IsWatched(descriptor))
        poller.Unwatch(descriptor);
}

int DescriptorWatches::RunReady(os::CallQueueDescriptor& poller) {
    if (mWatches.empty())
        return 0;
    int count = 0;
    // What is watched from now on was not asked about: its descriptor may bear the number of one that is closed.
    std::uint64_t const last = mLastNumber;
    for (os::CallQueueDescriptor::Ready const ready : poller.GetReady()) {
        std::vector<std::uint64_t> const numbers = NumbersOf(ready.descriptor);
        if (numbers.empty())
            poller.Unwatch(ready.descriptor);
        // Looked up one by one: each call may remove those behind it.
        for (std::uint64_t const number : numbers) {
            auto const found = mWatches.find(number);
            if (number > last || found == mWatches.end())
                continue;
            auto const call = found->second.call;
            ++count;
            (*call)();
            CountHangUp(poller, number, ready);
        }
    }
    return count;
}

void DescriptorWatches::CountHangUp(os::CallQueueDescriptor& poller, std::uint64_t number,
                                    os::CallQueueDescriptor::Ready ready) {
    auto const found = mWatches.find(number);
    if (found == mWatches.end())
        return;
    Watch& watch = found->second;
    bool const idle = ready.hungUp && watch.hangUps > 0 && ready.available >= watch.available;
    watch.hangUps = idle ? watch.hangUps + 1 : ready.hungUp ? 1 : 0;
    watch.available = ready.available;
    if (watch.hangUps >= kMostHangUps)
        Remove(poller, number);
}

bool DescriptorWatches::IsWatched(std::intptr_t descriptor) const {
    return std::any_of(mWatches.begin(), mWatches.end(),
                       [descriptor](auto const& entry) { return entry.second.descriptor == descriptor; });
}

std::vector<std::uint64_t> DescriptorWatches::NumbersOf(std::intptr_t descriptor) const {
    std::vector<std::uint64_t> numbers;
    for (auto const& [number, watch] : mWatches) {
        if (watch.descriptor == descriptor)
            numbers.push_back(number);
    }
    return numbers;
}

} // namespace vyncore::threads
