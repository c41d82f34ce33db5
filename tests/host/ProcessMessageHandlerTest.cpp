#include "vynaudiofilterhost/ProcessMessageHandler.h"
#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/MainThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace vynaudiofilterhost;

/// Writes its turns into a log: +number on the process side, -number on the main side.
class LoggingMessage : public Message {
public:
    LoggingMessage(std::vector<int>& log, int number, std::vector<bool> process = {}, std::vector<bool> main = {})
        : mLog(log), mNumber(number), mProcess(std::move(process)), mMain(std::move(main)) {}

    bool ExecuteOnProcessThread() override { return Turn(mNumber, mProcess); }

    bool ExecuteOnMainThread() override {
        if (onMain)
            onMain();
        return Turn(-mNumber, mMain);
    }

    std::function<void()> onMain;

private:
    // Answers with the results given, in order, and with true once they have run out.
    bool Turn(int entry, std::vector<bool>& results) {
        mLog.push_back(entry);
        if (results.empty())
            return true;
        bool const result = results.front();
        results.erase(results.begin());
        return result;
    }

    std::vector<int>& mLog;
    int mNumber;
    std::vector<bool> mProcess;
    std::vector<bool> mMain;
};

class ProcessMessageHandlerTest : public testing::Test {
protected:
    void SetUp() override { SetMainThreadToCurrentThread(); }

    void Post(int number, std::vector<bool> process = {}, std::vector<bool> main = {}) {
        mHandler.Post(new LoggingMessage(mLog, number, std::move(process), std::move(main)));
    }

    void PumpBoth() {
        mHandler.PumpFromMainThread();
        mHandler.PumpFromProcessThread();
    }

    // The next flush ends the message, once nobody else holds it.
    void ExpectToGo(boost::intrusive_ptr<LoggingMessage>& message) {
        EXPECT_EQ(message->GetReferenceCount(), 2) << "the poster's and the list's";
        bool gone = false;
        message->onMain = [keep = std::shared_ptr<void>(nullptr, [&gone](void*) { gone = true; })] {};
        message.reset();
        EXPECT_FALSE(gone);
        mHandler.FlushMessageQueue();
        EXPECT_TRUE(gone);
    }

    std::vector<int> mLog;
    ProcessMessageHandler mHandler;
};

TEST_F(ProcessMessageHandlerTest, RingHoldsThirtyTwoMessagesAndTheRestFollowsInOrder) {
    mHandler.SetProcessing(true);
    std::vector<int> expected;
    for (int number = 1; number <= 70; ++number) {
        Post(number);
        expected.push_back(number);
    }
    mHandler.PumpFromProcessThread();
    EXPECT_EQ(mLog.size(), 32u);
    PumpBoth();
    EXPECT_EQ(mLog.size(), 64u);
    PumpBoth();
    EXPECT_EQ(mLog, expected);
}

TEST_F(ProcessMessageHandlerTest, MessageGoesToAndFroUntilItIsFinished) {
    mHandler.SetProcessing(true);
    Post(1, {false, false}, {false, true});
    mHandler.PumpFromProcessThread();
    EXPECT_EQ(mLog, (std::vector{1}));
    mHandler.PumpFromMainThread(); // refuses: back to the process side with the next transfer
    EXPECT_EQ(mLog, (std::vector{1, -1}));
    mHandler.PumpFromProcessThread();
    EXPECT_EQ(mLog, (std::vector{1, -1}));
    PumpBoth();
    EXPECT_EQ(mLog, (std::vector{1, -1, 1}));
    mHandler.PumpFromMainThread();
    mHandler.PumpFromMainThread();
    EXPECT_EQ(mLog, (std::vector{1, -1, 1, -1}));
}

TEST_F(ProcessMessageHandlerTest, ReturningMessageKeepsItsPlaceInLine) {
    mHandler.SetProcessing(true);
    Post(1, {false}, {false});
    mHandler.PumpFromProcessThread();
    for (int number = 2; number <= 40; ++number)
        Post(number);
    PumpBoth(); // 1 comes back, the ring is full with 2 to 33
    mLog.clear();
    PumpBoth();
    EXPECT_EQ(mLog, (std::vector{1, 34, 35, 36, 37, 38, 39, 40}));
}

TEST_F(ProcessMessageHandlerTest, MainThreadRunsBothSidesWhenNothingProcesses) {
    Post(1, {false});
    mHandler.FlushMessageQueue();
    EXPECT_EQ(mLog, (std::vector{1, -1}));
}

TEST_F(ProcessMessageHandlerTest, FinishedMessageStaysAsLongAsSomebodyElseHoldsIt) {
    boost::intrusive_ptr<LoggingMessage> message(new LoggingMessage(mLog, 1));
    mHandler.Post(message);
    mHandler.PumpFromMainThread();
    EXPECT_EQ(message->GetReferenceCount(), 2);
    mHandler.PumpFromMainThread();
    ExpectToGo(message);
}

TEST_F(ProcessMessageHandlerTest, MessageThatPostsFromItsMainSideIsNotRunTwice) {
    boost::intrusive_ptr<LoggingMessage> first(new LoggingMessage(mLog, 1, {false}));
    first->onMain = [this] {
        Post(2, {false});
        mHandler.FlushMessageQueue();
    };
    mHandler.Post(first);
    first.reset();
    mHandler.FlushMessageQueue();
    EXPECT_EQ(mLog, (std::vector{1, 2, -1, -2}));
}

TEST_F(ProcessMessageHandlerTest, OtherThreadPumpsTheProcessSideAlone) {
    mHandler.SetProcessing(true);
    mLog.reserve(8);
    Post(1, {false});
    std::thread([this] {
        vyntest::NoAllocationScope const guard;
        mHandler.FlushMessageQueue();
    }).join();
    EXPECT_EQ(mLog, (std::vector{1}));
}

TEST_F(ProcessMessageHandlerTest, MessageThatThrowsIsFinishedAndGoes) {
    boost::intrusive_ptr<LoggingMessage> message(new LoggingMessage(mLog, 1, {false}));
    message->onMain = [] { throw 1; };
    mHandler.Post(message);
    EXPECT_THROW(mHandler.FlushMessageQueue(), int);
    mHandler.FlushMessageQueue();
    EXPECT_EQ(mLog, (std::vector{1}));
    ExpectToGo(message);
}

/// Counts on both sides without allocating.
class CountingMessage : public Message {
public:
    CountingMessage(std::atomic<int>& process, int& main) : mProcess(process), mMain(main) {}
    bool ExecuteOnProcessThread() override { return ++mProcess % 2 == 0; }
    bool ExecuteOnMainThread() override { return ++mMain > 0; }

private:
    std::atomic<int>& mProcess;
    int& mMain;
};

// The two threads race for the ring, the states and the last references; meant for the thread sanitizer as well.
TEST_F(ProcessMessageHandlerTest, TenMillionMessagesPassBetweenTwoThreads) {
    constexpr int kMessages = 10'000'000;
    std::atomic<int> processed{0};
    int returned = 0;
    std::atomic<bool> done{false};
    mHandler.SetProcessing(true);
    std::thread render([&] {
        while (!done.load(std::memory_order_acquire)) {
            mHandler.PumpFromProcessThread();
            std::this_thread::yield(); // where cores are few the other side needs this one
        }
        vyntest::NoAllocationScope const guard;
        mHandler.PumpFromProcessThread();
    });
    for (int number = 0; number < kMessages; ++number) {
        mHandler.Post(new CountingMessage(processed, returned));
        // Never far ahead of the other side, as a poster that fills the list would only measure the list.
        while (number - processed.load(std::memory_order_relaxed) > 40) {
            mHandler.PumpFromMainThread();
            std::this_thread::yield();
        }
    }
    done.store(true, std::memory_order_release);
    render.join();
    mHandler.SetProcessing(false);
    for (int pass = 0; pass < 10; ++pass)
        mHandler.PumpFromMainThread();
    EXPECT_EQ(processed, kMessages);
    EXPECT_EQ(returned, kMessages / 2);
}

} // namespace
