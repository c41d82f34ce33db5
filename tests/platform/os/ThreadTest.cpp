#include "os/Thread.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(ThreadTest, EachThreadHasOneNumberOfItsOwn) {
    unsigned const own = os::GetCurrentThreadID();
    unsigned other = 0;
    std::thread([&] { other = os::GetCurrentThreadID(); }).join();
    EXPECT_NE(own, 0u);
    EXPECT_NE(other, 0u);
    EXPECT_NE(own, other);
    EXPECT_EQ(os::GetCurrentThreadID(), own);
}

} // namespace
