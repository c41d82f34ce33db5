#include "vyncore/debug/DebugDatabase.h"
#include "vyncore/debug/DebugMonitor.h"
#include "vyncore/debug/DebugStatisticCounterRolling.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using namespace vyncore::debug;
using vyncore::UTF16StringStream;

TEST(DebugMonitorTest, MonitorsAreRenderedInTheOrderOfTheirNames) {
    RegisterDebugMonitorCallback("test.b", [](UTF16StringStream& stream) { stream << "replaced"; });
    RegisterDebugMonitorCallback("test.b", [](UTF16StringStream& stream) { stream << "two " << 2; });
    RegisterDebugMonitorCallback("test.c", [](UTF16StringStream&) { throw std::runtime_error("broken"); });
    RegisterDebugMonitorCallback("test.a", [](UTF16StringStream& stream) {
        stream << "once";
        UnregisterDebugMonitorCallback("test.a");
    });
    EXPECT_EQ(RenderDebugMonitors(), u"test.a\nonce\ntest.b\ntwo 2\ntest.c\nfailed\n");
    UnregisterDebugMonitorCallback("test.c");
    EXPECT_EQ(RenderDebugMonitors(), u"test.b\ntwo 2\n");
    UnregisterDebugMonitorCallback("test.b");
    EXPECT_EQ(RenderDebugMonitors(), u"");
}

TEST(DebugStatisticCounterRollingTest, FiguresCoverTheLastValuesOnly) {
    DebugStatisticCounterRolling<double, 4> counter;
    EXPECT_EQ(counter.GetAverage(), 0.0);
    EXPECT_EQ(counter.GetMaximum(), 0.0);
    counter.Add(8.0);
    counter.Add(4.0);
    EXPECT_EQ(counter.GetCount(), 2u);
    EXPECT_EQ(counter.GetMinimum(), 4.0);
    EXPECT_EQ(counter.GetAverage(), 6.0);
    for (double const value : {1.0, 3.0, 2.0})
        counter.Add(value);
    EXPECT_EQ(counter.GetCount(), 4u);
    EXPECT_EQ(counter.GetLast(), 2.0);
    EXPECT_EQ(counter.GetMinimum(), 1.0);
    EXPECT_EQ(counter.GetMaximum(), 4.0);
    EXPECT_EQ(counter.GetAverage(), 2.5);
}

TEST(DebugDatabaseTest, OnlyTheTextTrueIsTrueAndDefaultsHoldForWhatIsMissing) {
    DebugDatabase& database = DebugDatabase::Get();
    EXPECT_TRUE(database.GetBool("test.key", true));
    EXPECT_EQ(database.GetInt("test.key", 7), 7);
    EXPECT_EQ(database.GetEntry("test.key", "none"), "none");
    database.SetBool("test.key", true);
    EXPECT_EQ(database.GetEntry("test.key", "false"), "true");
    database.SetEntry("test.key", "yes");
    EXPECT_FALSE(database.GetBool("test.key", true));
    EXPECT_EQ(database.GetInt("test.key", 7), 7);
    database.SetInt("test.key", -12);
    EXPECT_EQ(database.GetInt("test.key", 7), -12);
    EXPECT_EQ(database.GetString("test.key", u""), u"-12");
    database.RemoveEntry("test.key");
    EXPECT_TRUE(database.GetBool("test.key", true));
}

} // namespace
