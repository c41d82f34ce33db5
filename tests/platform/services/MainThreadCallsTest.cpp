#include "vyncore/threads/MainThreadCalls.h"
#include "support/CallLoop.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <algorithm>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace vyncore::threads;
using vyncore::utility::HighPrecisionTime;
using vyntest::IsCallQueueReady;

constexpr int kLongEnough = 10'000;

/// Goes round the loop of an application until no call is left; false when a call was never announced.
bool RunEverything() {
    while (NextDueNanos()) {
        if (!IsCallQueueReady(kLongEnough))
            return false;
        RunDueCalls();
    }
    return true;
}

std::function<void()> Append(std::string& text, char letter) {
    return [&text, letter] { text += letter; };
}

TEST(MainThreadCallsTest, CallsRunByDueTimeAndThenInTheOrderOfFiling) {
    std::string ran;
    EXPECT_TRUE(AsyncCallFromMainThread(Append(ran, 'e'), 30));
    EXPECT_TRUE(AsyncCallFromMainThread(Append(ran, 'c'), 15));
    for (char const letter : {'a', 'b'})
        EXPECT_TRUE(AsyncCallFromMainThread(Append(ran, letter), 0));
    EXPECT_TRUE(AsyncCallFromMainThread(Append(ran, 'd'), 15));
    EXPECT_FALSE(AsyncCallFromMainThread(nullptr, 0));
    EXPECT_TRUE(RunEverything());
    EXPECT_EQ(ran, "abcde");
    EXPECT_EQ(RunDueCalls(), 0);
}

TEST(MainThreadCallsTest, ADescriptorIsReadableFromTheDueTimeUntilTheCallHasRun) {
    EXPECT_FALSE(IsCallQueueReady(0));
    EXPECT_FALSE(NextDueNanos().has_value());
    std::string ran;
    std::uint64_t const filed = HighPrecisionTime::GetCurrentTimeStamp();
    AsyncCallFromMainThread(Append(ran, 'b'), 40);
    std::uint64_t const due = NextDueNanos().value();
    EXPECT_GE(due, filed + HighPrecisionTime::ConvertFromNanos(40'000'000));

    // An earlier one wakes the loop first; once it has run, the alarm stands on the later one again.
    AsyncCallFromMainThread(Append(ran, 'a'), 0);
    EXPECT_TRUE(IsCallQueueReady(kLongEnough));
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_TRUE(IsCallQueueReady(kLongEnough));
    EXPECT_GE(HighPrecisionTime::GetCurrentTimeStamp(), due);
    EXPECT_TRUE(IsCallQueueReady(0));
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_FALSE(IsCallQueueReady(0));
    EXPECT_EQ(ran, "ab");
}

TEST(MainThreadCallsTest, WhatARunningCallFilesWaitsForTheNextRun) {
    int ran = 0;
    std::function<void()> const again = [&] {
        if (++ran < 3)
            AsyncCallFromMainThread(again, 0);
    };
    AsyncCallFromMainThread(again, 0);
    for (int const expected : {1, 2, 3}) {
        EXPECT_TRUE(IsCallQueueReady(kLongEnough));
        EXPECT_EQ(RunDueCalls(), 1);
        EXPECT_EQ(ran, expected);
    }
    EXPECT_FALSE(NextDueNanos().has_value());
}

TEST(MainThreadCallsTest, AnExceptionReachesTheCallerAndLeavesTheOthersDue) {
    std::string ran;
    AsyncCallFromMainThread(Append(ran, 'a'), 0);
    AsyncCallFromMainThread([] { throw std::runtime_error("from a call"); }, 0);
    AsyncCallFromMainThread(Append(ran, 'b'), 0);
    EXPECT_THROW(RunDueCalls(), std::runtime_error);
    EXPECT_EQ(ran, "a");
    EXPECT_TRUE(IsCallQueueReady(kLongEnough));
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(ran, "ab");
}

TEST(MainThreadCallsTest, ACallMayRunALoopOfItsOwn) {
    std::string ran;
    int inner = 0;
    AsyncCallFromMainThread(
        [&] {
            AsyncCallFromMainThread(Append(ran, 'c'), 0);
            inner = RunDueCalls();
            ran += 'd';
        },
        0);
    AsyncCallFromMainThread(Append(ran, 'a'), 0);
    AsyncCallFromMainThread(Append(ran, 'b'), 0);
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(inner, 3);
    EXPECT_EQ(ran, "abcd");
}

TEST(MainThreadCallsTest, WhatACallHoldsMayFileACallAsItGoes) {
    bool ran = false;
    AsyncCallFromMainThread([held = std::shared_ptr<void>(
                                 nullptr, [&ran](void*) { AsyncCallFromMainThread([&ran] { ran = true; }, 0); })] {},
                            0);
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_TRUE(RunEverything());
    EXPECT_TRUE(ran);
}

TEST(MainThreadCallsTest, SeveralThreadsFileWhileOneRuns) {
    constexpr int kThreads = 4;
    constexpr int kCalls = 500;
    std::array<std::vector<int>, kThreads> ran;
    int total = 0;
    std::vector<std::thread> threads;
    for (std::vector<int>& mine : ran) {
        threads.emplace_back([&mine, &total] {
            for (int number = 0; number < kCalls; ++number) {
                auto const call = [&mine, &total, number] { mine.push_back(number), ++total; };
                EXPECT_TRUE(AsyncCallFromMainThread(call, static_cast<unsigned>(number / 250)));
            }
        });
    }
    while (total < kThreads * kCalls && IsCallQueueReady(kLongEnough))
        RunDueCalls();
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(total, kThreads * kCalls);
    for (std::vector<int> const& mine : ran)
        EXPECT_TRUE(std::is_sorted(mine.begin(), mine.end()));
}

} // namespace
