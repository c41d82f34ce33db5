#include "vynaudiofilterhost/ModuleUITimer.h"

#include "host/HostTest.h"
#include "support/CallLoop.h"
#include "vyncore/debug/DebugMonitor.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/utility/HighPrecisionTime.h"

#include <stdexcept>

namespace {

using namespace vyntest;

using vyncore::utility::HighPrecisionTime;

constexpr int kPatienceMilliseconds = 5000;

double MillisecondsSince(std::uint64_t stamp) {
    return static_cast<double>(HighPrecisionTime::ConvertToNanos(HighPrecisionTime::GetCurrentTimeStamp() - stamp)) /
           1e6;
}

void RunCallsUntilNoneAreLeft() {
    ASSERT_TRUE(RunCallsUntil([] { return !vyncore::threads::NextDueNanos(); }));
}

/// The lines of the timer's monitor, without the name before them.
std::string MonitorText() {
    auto const all = vyncore::string::UTF16to8(vyncore::debug::RenderDebugMonitors());
    auto const start = all.find("Timer Period:");
    return start == std::string::npos ? all : all.substr(start);
}

class ModuleUITimerTest : public testing::Test {
protected:
    // Another test of the program may have left a tick behind.
    void SetUp() override { RunCallsUntilNoneAreLeft(); }

    void TearDown() override {
        mConnection.disconnect();
        RunCallsUntilNoneAreLeft();
    }

    void Connect() {
        mConnection = ModuleUITimer::GetInstance().ConnectTick([this] { ++mTicks; });
    }

    void RunOneTick() {
        auto const wanted = mTicks + 1;
        ASSERT_TRUE(RunCallsUntil([&] { return mTicks >= wanted; }));
    }

    int mTicks = 0;
    boost::signals2::scoped_connection mConnection;
};

TEST_F(ModuleUITimerTest, TicksWhileConnectedAndStopsWithTheLastConnection) {
    auto const start = HighPrecisionTime::GetCurrentTimeStamp();
    Connect();
    boost::signals2::scoped_connection second = ModuleUITimer::GetInstance().ConnectTick(+[] {});
    EXPECT_EQ(mTicks, 0);
    RunOneTick();
    RunOneTick();
    RunOneTick();
    EXPECT_GE(MillisecondsSince(start), 60.0) << "two connections run two timers";

    second.disconnect();
    mConnection.disconnect();
    RunCallsUntilNoneAreLeft();
    EXPECT_EQ(mTicks, 3);

    Connect();
    RunOneTick();
}

TEST_F(ModuleUITimerTest, ElapsedCheckFiresOncePerPeriodThatIsTenMillisecondsLate) {
    auto& timer = ModuleUITimer::GetInstance();
    auto const start = HighPrecisionTime::GetCurrentTimeStamp();
    Connect();
    while (mTicks < 3 && MillisecondsSince(start) < kPatienceMilliseconds)
        timer.CheckForElapsedTimer();
    EXPECT_EQ(mTicks, 3);
    EXPECT_GE(MillisecondsSince(start), 20.0 + 10.0 + 2 * 20.0);

    vyncore::threads::RunDueCalls();
    EXPECT_EQ(mTicks, 4) << "the scheduled tick is left alone";
}

TEST_F(ModuleUITimerTest, ASlotThatThrowsKeepsNobodyFromTheTick) {
    vyncore::debug::SetTraceLevel(-1);
    boost::signals2::scoped_connection const thrower =
        ModuleUITimer::GetInstance().ConnectTick(+[] { throw std::runtime_error("plug-in"); });
    Connect();
    RunOneTick();
    RunOneTick();
    vyncore::debug::ResetTraceLevels();
}

TEST_F(ModuleUITimerTest, MonitorCountsTheConnections) {
    Connect();
    EXPECT_NE(MonitorText().find("Timer Period:  20 ms \nMeasured:  "), std::string::npos);
    EXPECT_NE(MonitorText().find("\n0020 ms: 1 connection\n"), std::string::npos);
    mConnection.disconnect();
    EXPECT_NE(MonitorText().find("\n0020 ms: 0 connections\n"), std::string::npos);
}

} // namespace
