#include "os/WaitForDescriptors.h"

#include "os/Clock.h"

#include <algorithm>
#include <ctime>
#include <poll.h>
#include <vector>

namespace os {

namespace {

timespec TimeUntil(std::uint64_t deadlineNanos) {
    constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;
    std::uint64_t const now = GetMonotonicNanos();
    std::uint64_t const left = deadlineNanos > now ? deadlineNanos - now : 0;
    return {static_cast<time_t>(left / kNanosPerSecond), static_cast<long>(left % kNanosPerSecond)};
}

} // namespace

void WaitForDescriptors(std::span<std::intptr_t const> descriptors, std::optional<std::uint64_t> deadlineNanos) {
    std::vector<pollfd> polled(descriptors.size());
    std::ranges::transform(descriptors, polled.begin(), [](std::intptr_t descriptor) {
        return pollfd{static_cast<int>(descriptor), POLLIN, 0};
    });
    timespec const time = TimeUntil(deadlineNanos.value_or(0));
    ::ppoll(polled.data(), polled.size(), deadlineNanos ? &time : nullptr, nullptr);
}

} // namespace os
