#pragma once

#include "os/CallQueueDescriptor.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace vyncore::threads {

/// Calls that wait for descriptors to become readable. The call queue owns it and has it run what is ready.
class DescriptorWatches {
public:
    /// 0 when the descriptor can't be watched.
    /// [main-thread]
    std::uint64_t Add(os::CallQueueDescriptor& poller, std::intptr_t descriptor, std::function<void()> call);

    /// [main-thread]
    void Remove(os::CallQueueDescriptor& poller, std::uint64_t number) noexcept;

    /// Runs the calls of what is readable and returns how many ran. They may add and remove watches.
    /// [main-thread]
    int RunReady(os::CallQueueDescriptor& poller);

private:
    struct Watch {
        std::intptr_t descriptor;
        std::shared_ptr<std::function<void()> const> call;
        int hangUps = 0; ///< in a row, in which nothing was taken
        int available = 0;
    };

    bool IsWatched(std::intptr_t descriptor) const;
    std::vector<std::uint64_t> NumbersOf(std::intptr_t descriptor) const;
    void CountHangUp(os::CallQueueDescriptor& poller, std::uint64_t number, os::CallQueueDescriptor::Ready ready);

    std::map<std::uint64_t, Watch> mWatches; ///< by number, which is the order of adding
    std::uint64_t mLastNumber = 0;
};

} // namespace vyncore::threads
