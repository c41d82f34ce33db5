#include "os/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

std::uint64_t SteadyNanos() {
    auto const now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

TEST(ClockTest, CountsNanoseconds) {
    std::uint64_t const outerStart = SteadyNanos();
    std::uint64_t const start = os::GetMonotonicNanos();
    std::uint64_t const innerStart = SteadyNanos();
    while (SteadyNanos() - innerStart < 2'000'000) {
    }
    std::uint64_t const inner = SteadyNanos() - innerStart;
    std::uint64_t const elapsed = os::GetMonotonicNanos() - start;
    EXPECT_GE(elapsed, inner);
    EXPECT_LE(elapsed, SteadyNanos() - outerStart);
}

} // namespace
