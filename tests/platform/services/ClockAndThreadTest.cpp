#include "support/NoAllocationScope.h"
#include "vyncore/threads/Threads.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace {

using vyncore::threads::GetCurrentThreadID;
using vyncore::utility::HighPrecisionTime;

TEST(HighPrecisionTimeTest, IntervalsAreThoseOfASteadyClock) {
    auto const steadyBefore = std::chrono::steady_clock::now();
    std::uint64_t const before = HighPrecisionTime::GetCurrentTimeStamp();
    std::uint64_t const end = before + HighPrecisionTime::ConvertFromNanos(2'000'000);
    while (HighPrecisionTime::GetCurrentTimeStamp() < end) {
    }
    std::uint64_t const after = HighPrecisionTime::GetCurrentTimeStamp();
    std::chrono::nanoseconds const steady = std::chrono::steady_clock::now() - steadyBefore;
    EXPECT_GE(HighPrecisionTime::ConvertToNanos(after - before), 2'000'000u);
    EXPECT_GE(steady.count(), 2'000'000);
    EXPECT_LE(HighPrecisionTime::ConvertToNanos(after - before), static_cast<std::uint64_t>(steady.count()));
}

TEST(ThreadsTest, ThreadsHaveNumbersOfTheirOwn) {
    unsigned const mine = GetCurrentThreadID();
    unsigned other = mine;
    std::thread([&other] { other = GetCurrentThreadID(); }).join();
    EXPECT_NE(other, mine);
    vyntest::NoAllocationScope const scope;
    EXPECT_EQ(GetCurrentThreadID(), mine);
}

} // namespace
