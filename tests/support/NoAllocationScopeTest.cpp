#include "support/NoAllocationScope.h"

#include "os/ModuleLoader.h"
#include "vyncore/strings/StringUtils.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <string>
#include <thread>

namespace {

using vyntest::NoAllocationScope;

// Out of the optimiser's sight, which may leave out a pair of malloc and free.
void* volatile gMemory = nullptr;

int ViolationsOf(std::function<void()> const& work) {
    NoAllocationScope const scope(NoAllocationScope::AtEnd::kCountOnly);
    work();
    return scope.Violations();
}

TEST(NoAllocationScopeTest, EveryWayToAskForMemoryIsCaught) {
    gMemory = std::malloc(8);
    EXPECT_EQ(ViolationsOf([] { std::free(gMemory); }), 1);
    EXPECT_EQ(ViolationsOf([] { gMemory = std::malloc(8); }), 1);
    EXPECT_GE(ViolationsOf([] { gMemory = std::realloc(gMemory, 100'000); }), 1);
    std::free(gMemory);
    EXPECT_EQ(ViolationsOf([] { gMemory = std::calloc(2, 8); }), 1);
    std::free(gMemory);
    if (NoAllocationScope::WatchesLocks()) { // ThreadSanitizer tells of every way but this one.
        EXPECT_EQ(ViolationsOf([] { gMemory = std::aligned_alloc(64, 64); }), 1);
        std::free(gMemory);
    }
    EXPECT_EQ(ViolationsOf([] { gMemory = new int(1); }), 1);
    EXPECT_EQ(ViolationsOf([] { delete static_cast<int*>(gMemory); }), 1);
    EXPECT_EQ(ViolationsOf([] { gMemory = ::operator new (64, std::align_val_t{64}); }), 1);
    EXPECT_EQ(ViolationsOf([] { ::operator delete (gMemory, std::align_val_t{64}); }), 1);
}

TEST(NoAllocationScopeTest, LocksAndWaitsAreCaught) {
    if (!NoAllocationScope::WatchesLocks())
        GTEST_SKIP() << "ThreadSanitizer has the locks to itself";
    std::mutex mutex;
    std::recursive_mutex recursiveMutex;
    std::shared_mutex sharedMutex;
    EXPECT_EQ(ViolationsOf([&] { std::lock_guard const lock(mutex); }), 1);
    EXPECT_EQ(ViolationsOf([&] { std::lock_guard const lock(recursiveMutex); }), 1);
    EXPECT_EQ(ViolationsOf([&] { std::shared_lock const lock(sharedMutex); }), 1);
    EXPECT_EQ(ViolationsOf([&] { std::unique_lock const lock(sharedMutex); }), 1);
    EXPECT_EQ(ViolationsOf([&] { std::unique_lock const lock(mutex, std::try_to_lock); }), 0);
    std::condition_variable condition;
    std::unique_lock lock(mutex);
    EXPECT_GE(ViolationsOf([&] { condition.wait_for(lock, std::chrono::nanoseconds(1)); }), 1);
}

TEST(NoAllocationScopeTest, AModuleThatAllocatesIsCaught) {
    std::string reason;
    HINSTANCE__* const module = os::OpenModule(vyncore::string::UTF8to16(VYN_ALLOCATING_MODULE), reason);
    ASSERT_NE(module, nullptr) << reason;
    auto const allocate = reinterpret_cast<void (*)()>(os::FindExport(module, "AllocateInModule"));
    EXPECT_EQ(ViolationsOf(allocate), 2);
    os::CloseModule(module);
}

TEST(NoAllocationScopeTest, OtherThreadsAndQuietWorkDoNotCount) {
    std::atomic<int> step{0};
    std::thread other([&step] {
        while (step.load() == 0)
            std::this_thread::yield();
        delete new std::string(1000, 'x');
        step = 2;
    });
    EXPECT_EQ(ViolationsOf([&step] {
                  step = 1;
                  while (step.load() != 2)
                      std::this_thread::yield();
              }),
              0);
    other.join();
}

TEST(NoAllocationScopeTest, AScopeFailsTheTestAndNamesTheFirstCall) {
    EXPECT_NONFATAL_FAILURE(
        {
            NoAllocationScope const scope;
            gMemory = std::malloc(8);
            std::free(gMemory);
        },
        "2 allocations, releases or locks on a thread that makes none; the first was malloc in");
}

TEST(NoAllocationScopeTest, AnOuterScopeCountsWhatAnInnerOneSawAndNothingBefore) {
    NoAllocationScope const outer(NoAllocationScope::AtEnd::kCountOnly);
    EXPECT_EQ(ViolationsOf([] {}), 0);
    int const before = outer.Violations();
    EXPECT_EQ(ViolationsOf([] { gMemory = std::malloc(8); }), 1);
    EXPECT_GT(outer.Violations(), before);
    std::free(gMemory);
}

} // namespace
