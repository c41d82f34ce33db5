#include "os/Clock.h"

#include <time.h>

namespace os {

std::uint64_t GetMonotonicNanos() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000u + static_cast<std::uint64_t>(now.tv_nsec);
}

} // namespace os
