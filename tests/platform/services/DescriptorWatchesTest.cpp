#include "support/CallLoop.h"
#include "support/Pipe.h"
#include "vyncore/threads/MainThreadCalls.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace vyncore::threads;
using vyntest::IsCallQueueReady;
using vyntest::Pipe;

class DescriptorWatchesTest : public testing::Test {
protected:
    ~DescriptorWatchesTest() override {
        for (std::uint64_t const watch : mWatches)
            UnwatchDescriptor(watch);
        EXPECT_FALSE(IsCallQueueReady());
    }

    std::uint64_t Watch(Pipe const& pipe, std::function<void()> call) {
        std::uint64_t const watch = WatchDescriptor(pipe.GetReader(), std::move(call));
        EXPECT_NE(watch, 0u);
        mWatches.push_back(watch);
        return watch;
    }

    std::uint64_t Watch(Pipe const& pipe, char letter) {
        return Watch(pipe, [this, letter] { ran += letter; });
    }

    std::string ran;

private:
    std::vector<std::uint64_t> mWatches;
};

TEST_F(DescriptorWatchesTest, CallsRunBehindThoseThatAreDueAndInTheOrderOfWatching) {
    Pipe pipe;
    for (char const letter : {'b', 'c', 'd'})
        Watch(pipe, letter);
    EXPECT_TRUE(pipe.Write());
    AsyncCallFromMainThread([this] { ran += 'a'; }, 0);
    EXPECT_TRUE(IsCallQueueReady());
    EXPECT_EQ(RunDueCalls(), 4);
    EXPECT_EQ(ran, "abcd");
    EXPECT_TRUE(IsCallQueueReady()) << "nobody has read it";
    EXPECT_EQ(RunDueCalls(), 3);
    EXPECT_TRUE(pipe.Read());
    EXPECT_FALSE(IsCallQueueReady());
    EXPECT_EQ(RunDueCalls(), 0);
    EXPECT_FALSE(NextDueNanos().has_value()) << "a watch has no time";
}

TEST_F(DescriptorWatchesTest, WatchesEndInsideTheirOwnCallsAndEachOthers) {
    Pipe pipe;
    std::uint64_t own = 0, later = 0;
    own = Watch(pipe, [&] {
        ran += 'a';
        UnwatchDescriptor(own);
        UnwatchDescriptor(later);
        Watch(pipe, 'd');
    });
    later = Watch(pipe, 'b');
    Watch(pipe, 'c');
    EXPECT_TRUE(pipe.Write());
    RunDueCalls();
    EXPECT_EQ(ran, "ac") << "what was added waits for the next run";
    RunDueCalls();
    EXPECT_EQ(ran, "accd");
    UnwatchDescriptor(own);
    UnwatchDescriptor(0);
    UnwatchDescriptor(~std::uint64_t{0});
    RunDueCalls();
    EXPECT_EQ(ran, "accdcd");
}

TEST_F(DescriptorWatchesTest, ExceptionReachesTheCallerAndTheWatchStays) {
    Pipe pipe;
    std::uint64_t const throwing = Watch(pipe, [] { throw std::runtime_error("from a watch"); });
    Watch(pipe, 'a');
    EXPECT_TRUE(pipe.Write());
    for (int turn = 0; turn < 2; ++turn)
        EXPECT_THROW(RunDueCalls(), std::runtime_error);
    UnwatchDescriptor(throwing);
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(ran, "a");
}

TEST_F(DescriptorWatchesTest, HangUpIsGivenUpWhenNobodyReadsOn) {
    Pipe drained, ignored;
    for (int byte = 0; byte < 200; ++byte)
        EXPECT_TRUE(drained.Write());
    std::uint64_t last = 0;
    last = Watch(drained, [&] {
        ran += 'a';
        if (!drained.Read())
            UnwatchDescriptor(last);
    });
    Watch(ignored, [] {});
    drained.CloseWriter();
    ignored.CloseWriter();
    int rounds = 0;
    while (IsCallQueueReady() && rounds < 10'000) {
        RunDueCalls();
        ++rounds;
    }
    EXPECT_LT(rounds, 10'000) << "the application's loop may rest";
    EXPECT_EQ(ran.size(), 201u) << "all of it was read, byte by byte, and the end seen";
}

TEST_F(DescriptorWatchesTest, DescriptorThatWasClosedIsHeardOfNoMoreAndItsNumberMayBeWatchedAnew) {
    auto closed = std::make_unique<Pipe>();
    EXPECT_TRUE(closed->Write());
    int const copy = dup(closed->GetReader());
    std::uint64_t const gone = Watch(*closed, 'x');
    closed.reset();
    RunDueCalls();
    UnwatchDescriptor(gone);
    EXPECT_FALSE(IsCallQueueReady());
    EXPECT_EQ(RunDueCalls(), 0);
    close(copy);
    ran.clear();

    auto before = std::make_unique<Pipe>();
    int const number = before->GetReader();
    std::uint64_t const old = Watch(*before, 'a');
    before.reset();
    Pipe after;
    ASSERT_EQ(after.GetReader(), number);
    std::uint64_t const anew = Watch(after, 'b');
    UnwatchDescriptor(old);
    EXPECT_TRUE(after.Write());
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(ran, "b");
    UnwatchDescriptor(anew);
    EXPECT_FALSE(IsCallQueueReady());
}

TEST_F(DescriptorWatchesTest, DescriptorWatchedInsideACallIsNotTakenForTheOneThatHadItsNumber) {
    auto a = std::make_unique<Pipe>(), b = std::make_unique<Pipe>();
    EXPECT_TRUE(a->Write() && b->Write());
    std::unique_ptr<Pipe> fresh;
    std::uint64_t watchA = 0, watchB = 0;
    // Whichever comes first ends both, and watches a pipe with nothing to read that has the numbers of the other.
    auto const renew = [&](std::unique_ptr<Pipe>& other) {
        UnwatchDescriptor(watchA);
        UnwatchDescriptor(watchB);
        int const number = other->GetReader();
        other.reset();
        fresh = std::make_unique<Pipe>();
        EXPECT_EQ(fresh->GetReader(), number);
        Watch(*fresh, 'x');
    };
    watchA = Watch(*a, [&] { renew(b); });
    watchB = Watch(*b, [&] { renew(a); });
    EXPECT_EQ(RunDueCalls(), 1);
    EXPECT_EQ(ran, "");
    EXPECT_EQ(RunDueCalls(), 0);
}

TEST_F(DescriptorWatchesTest, EachOfManyReadableDescriptorsHasItsTurn) {
    std::array<Pipe, 150> pipes;
    std::array<int, 150> counts{};
    for (std::size_t place = 0; place < pipes.size(); ++place) {
        Watch(pipes[place], [&counts, place] { ++counts[place]; });
        EXPECT_TRUE(pipes[place].Write());
    }
    for (int round = 0; round < 3; ++round)
        RunDueCalls();
    for (std::size_t place = 0; place < pipes.size(); ++place)
        EXPECT_GE(counts[place], 1) << place;
}

TEST_F(DescriptorWatchesTest, CallMayRunALoopOfItsOwn) {
    Pipe outer, inner;
    Watch(outer, [&] {
        ran += 'a';
        EXPECT_TRUE(outer.Read());
        EXPECT_TRUE(inner.Write());
        RunDueCalls();
        ran += 'c';
    });
    Watch(inner, [&] {
        ran += 'b';
        EXPECT_TRUE(inner.Read());
    });
    EXPECT_TRUE(outer.Write());
    RunDueCalls();
    EXPECT_EQ(ran, "abc");
}

TEST_F(DescriptorWatchesTest, WhatCannotBeWatchedHasNoNumber) {
    Pipe pipe;
    EXPECT_EQ(WatchDescriptor(-1, [] {}), 0u);
    EXPECT_EQ(WatchDescriptor(pipe.GetReader(), nullptr), 0u);
    EXPECT_EQ(WatchDescriptor(GetCallQueueDescriptor(), [] {}), 0u) << "it would wake itself";
    int const number = pipe.GetReader();
    pipe.CloseReader();
    EXPECT_EQ(WatchDescriptor(number, [] {}), 0u);
}

} // namespace
