#include "vynaudiofilterhost/Library.h"

#include "host/HostTest.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vyncore/threads/Threads.h"

#include <thread>

namespace {

using namespace vyntest;

void RunElsewhere(void (*work)()) {
    std::thread(work).join();
}

TEST(LibraryTest, TheFirstInitializeNamesTheMainThreadUntilTheLastTerminate) {
    ASSERT_TRUE(Initialize(true));
    ASSERT_TRUE(Initialize(false));
    EXPECT_EQ(GetMainThreadID(), vyncore::threads::GetCurrentThreadID());
    EXPECT_TRUE(CurrentThreadIDIsMainThreadID());
    RunElsewhere([] { EXPECT_FALSE(CurrentThreadIDIsMainThreadID()); });
    Terminate();
    Terminate();

    RunElsewhere([] {
        ASSERT_TRUE(Initialize(true));
        EXPECT_TRUE(CurrentThreadIDIsMainThreadID());
        Terminate();
    });
    EXPECT_FALSE(CurrentThreadIDIsMainThreadID());
    // One too many does not spoil the count.
    Terminate();
    ASSERT_TRUE(Initialize(true));
    Terminate();
    Terminate();
    ASSERT_TRUE(Initialize(true));
    EXPECT_TRUE(CurrentThreadIDIsMainThreadID());
    Terminate();
}

} // namespace
