#include "vynaudiofilterhost/VST3/src/HostRunLoop.h"

#include "support/CallLoop.h"
#include "support/Pipe.h"
#include "vynaudiofilterhost/Library.h"

#include "pluginterfaces/gui/iplugview.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

using namespace Steinberg;
using vynaudiofilterhost::vst3::HostRunLoop;
using vyntest::RunCallsFor;
using vyntest::RunCallsUntil;

/// A handler on a test's stack.
template <class Interface>
class StackHandler : public Interface {
public:
    tresult PLUGIN_API queryInterface(TUID const, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    int count = 0;
    std::function<void()> call = [] {};

protected:
    void Count() {
        ++count;
        call();
    }
};

struct Timer final : StackHandler<Linux::ITimerHandler> {
    void PLUGIN_API onTimer() override { Count(); }
};

struct Reader final : StackHandler<Linux::IEventHandler> {
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor given) override {
        descriptor = given;
        Count();
    }

    int descriptor = -1;
};

class HostRunLoopTest : public testing::Test {
protected:
    HostRunLoopTest() { vynaudiofilterhost::Initialize(true); }

    ~HostRunLoopTest() override {
        owner->Close();
        RunCallsFor(5); // those of timers that are taken back stay filed
        vynaudiofilterhost::Terminate();
    }

    void Start(Timer& timer, std::uint64_t milliseconds = 1) {
        EXPECT_EQ(loop->registerTimer(&timer, milliseconds), kResultOk);
    }

    void Start(Reader& handler, int descriptor) {
        EXPECT_EQ(loop->registerEventHandler(&handler, descriptor), kResultOk);
    }

    void Stop(Timer& timer) { EXPECT_EQ(loop->unregisterTimer(&timer), kResultOk); }
    void Stop(Reader& handler) { EXPECT_EQ(loop->unregisterEventHandler(&handler), kResultOk); }

    std::shared_ptr<HostRunLoop> const owner = HostRunLoop::Make();
    Linux::IRunLoop* const loop = static_cast<Linux::IRunLoop*>(owner->Query(Linux::IRunLoop::iid));
    Timer first;
    Timer second;
    Reader reader;
    vyntest::Pipe pipe;
};

TEST_F(HostRunLoopTest, TimersFireOverAndOverUntilTheyAreTakenBack) {
    Start(first);
    Start(second, 3);
    EXPECT_EQ(first.count, 0) << "not before the main thread runs its calls";
    EXPECT_TRUE(RunCallsUntil([this] { return first.count >= 5 && second.count >= 2; }));
    EXPECT_GE(first.count, second.count);
    Stop(first);
    int const before = first.count;
    int const more = second.count + 2;
    EXPECT_TRUE(RunCallsUntil([&] { return second.count >= more; }));
    EXPECT_EQ(first.count, before);
    EXPECT_EQ(loop->unregisterTimer(&first), kResultFalse) << "it isn't there any more";
}

TEST_F(HostRunLoopTest, TimersMayTakeBackThemselvesAndEachOtherInTheirOwnCalls) {
    first.call = [this] {
        Stop(first);
        Stop(second);
    };
    Start(first);
    Start(second); // due behind the first, and in the same round as a rule
    RunCallsFor(10);
    EXPECT_EQ(first.count, 1);
    EXPECT_EQ(second.count, 0);

    // Taken back and registered anew in its own call, it goes on as one timer.
    first.call = [this] {
        Stop(first);
        if (first.count < 5)
            Start(first);
    };
    Start(first);
    RunCallsFor(100);
    EXPECT_EQ(first.count, 5);
    EXPECT_EQ(loop->unregisterTimer(&first), kResultFalse);
}

TEST_F(HostRunLoopTest, TimerThatThrowsOrRunsALoopOfItsOwnGoesOn) {
    first.call = [] { throw std::runtime_error("from a timer"); };
    second.call = [this] {
        int const outer = second.count;
        RunCallsFor(5);
        EXPECT_EQ(second.count, outer) << "it isn't called inside its own call";
    };
    Start(first);
    Start(second);
    EXPECT_TRUE(RunCallsUntil([this] { return first.count >= 3 && second.count >= 3; }));
}

TEST_F(HostRunLoopTest, IntervalsAreTakenAsFarAsTheyMakeSense) {
    Start(first, 0);
    Start(second, ~std::uint64_t{0});
    vyncore::threads::RunDueCalls();
    EXPECT_LE(first.count, 1) << "not for ever in one round";
    EXPECT_TRUE(RunCallsUntil([this] { return first.count >= 3; }));
    EXPECT_EQ(second.count, 0);
}

TEST_F(HostRunLoopTest, DescriptorsAreReportedWhileTheyAreReadableAndWakeTheCallQueue) {
    Start(reader, pipe.GetReader());
    EXPECT_FALSE(vyntest::IsCallQueueReady());
    vyncore::threads::RunDueCalls();
    EXPECT_EQ(reader.count, 0);
    EXPECT_TRUE(pipe.Write() && pipe.Write());
    for (int const expected : {1, 2}) {
        EXPECT_TRUE(vyntest::IsCallQueueReady());
        EXPECT_EQ(vyncore::threads::RunDueCalls(), 1);
        EXPECT_EQ(reader.count, expected);
        EXPECT_EQ(reader.descriptor, pipe.GetReader());
        EXPECT_TRUE(pipe.Read());
    }
    EXPECT_FALSE(vyntest::IsCallQueueReady());
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 0);

    EXPECT_TRUE(pipe.Write());
    Stop(reader);
    EXPECT_FALSE(vyntest::IsCallQueueReady());
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 0);
    EXPECT_EQ(loop->unregisterEventHandler(&reader), kResultFalse);
}

TEST_F(HostRunLoopTest, DescriptorHandlersMayTakeBackThemselvesAndEachOtherInTheirOwnCalls) {
    vyntest::Pipe other;
    Reader same, elsewhere;
    auto const stopAll = [&] {
        Stop(reader);
        Stop(same);
        Stop(elsewhere);
    };
    Start(reader, pipe.GetReader());
    Start(same, pipe.GetReader());
    Start(elsewhere, other.GetReader());
    EXPECT_TRUE(pipe.Write() && other.Write());
    reader.call = same.call = elsewhere.call = stopAll;
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 1);
    EXPECT_EQ(reader.count + same.count + elsewhere.count, 1);
    EXPECT_FALSE(vyntest::IsCallQueueReady());

    // One handler for two descriptors is taken back from both.
    reader.call = [] {};
    Start(reader, pipe.GetReader());
    Start(reader, other.GetReader());
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 2);
    Stop(reader);
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 0);
}

TEST_F(HostRunLoopTest, DescriptorWhoseOtherEndHasGoneIsGivenUp) {
    EXPECT_TRUE(pipe.Write());
    Start(reader, pipe.GetReader());
    pipe.CloseWriter();
    reader.call = [] { throw std::runtime_error("from a handler"); };
    EXPECT_TRUE(RunCallsUntil([] { return !vyntest::IsCallQueueReady(); })) << "the application may rest";
    EXPECT_GE(reader.count, 2) << "but whoever takes several turns to read it empty gets them";
    EXPECT_TRUE(pipe.Read());
    Stop(reader);
}

TEST_F(HostRunLoopTest, NothingIsCalledOrTakenOnceItIsClosed) {
    Start(first);
    Start(reader, pipe.GetReader());
    EXPECT_TRUE(pipe.Write());
    owner->Close();
    RunCallsFor(5);
    EXPECT_EQ(first.count + reader.count, 0);
    EXPECT_EQ(loop->registerTimer(&first, 1), kResultFalse);
    EXPECT_EQ(loop->registerEventHandler(&reader, pipe.GetReader()), kResultFalse);
    EXPECT_EQ(loop->unregisterTimer(&first), kResultFalse);
    EXPECT_EQ(loop->unregisterEventHandler(&reader), kResultFalse);
    EXPECT_EQ(owner->Query(Linux::IRunLoop::iid), loop);
    RunCallsFor(5);
    EXPECT_EQ(first.count + reader.count, 0);
}

TEST_F(HostRunLoopTest, TimerMayCloseTheLoopThatCallsIt) {
    first.call = [this] { owner->Close(); };
    Start(first);
    Start(second);
    RunCallsFor(5);
    EXPECT_EQ(first.count, 1);
    EXPECT_EQ(second.count, 0);
}

TEST_F(HostRunLoopTest, OtherThreadsAreRefused) {
    Start(second);
    std::thread([this] {
        EXPECT_EQ(loop->registerTimer(&first, 1), kResultFalse);
        EXPECT_EQ(loop->unregisterTimer(&second), kResultFalse);
        EXPECT_EQ(loop->registerEventHandler(&reader, pipe.GetReader()), kResultFalse);
        EXPECT_EQ(loop->unregisterEventHandler(&reader), kResultFalse);
    }).join();
    EXPECT_TRUE(pipe.Write());
    EXPECT_TRUE(RunCallsUntil([this] { return second.count >= 2; }));
    EXPECT_EQ(first.count + reader.count, 0);
}

TEST_F(HostRunLoopTest, WhatCannotBeGivenOrRegisteredIsRefused) {
    void* found = nullptr;
    EXPECT_EQ(loop->queryInterface(Linux::IRunLoop::iid, &found), kResultOk);
    EXPECT_EQ(found, loop);
    EXPECT_EQ(loop->queryInterface(IPlugFrame::iid, &found), kNoInterface);
    EXPECT_EQ(loop->queryInterface(Linux::IRunLoop::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(loop->release(), 1u) << "its life is its owner's";
    EXPECT_EQ(loop->registerTimer(nullptr, 1), kInvalidArgument);
    EXPECT_EQ(loop->registerEventHandler(nullptr, pipe.GetReader()), kInvalidArgument);
    EXPECT_EQ(loop->registerEventHandler(&reader, -1), kInvalidArgument);
    int const closed = pipe.GetReader();
    pipe.CloseReader();
    EXPECT_EQ(loop->registerEventHandler(&reader, closed), kResultFalse);
    std::FILE* const file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(loop->registerEventHandler(&reader, fileno(file)), kResultFalse) << "a file is always readable";
    std::fclose(file);
    EXPECT_EQ(vyncore::threads::RunDueCalls(), 0);
}

} // namespace
