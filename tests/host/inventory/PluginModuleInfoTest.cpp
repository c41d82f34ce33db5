#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"

#include "host/HostTest.h"

namespace {

using namespace vyntest;

// Keys and types as they lie in files of earlier runs.
PropList StoredByHand() {
    PropList list;
    list.SetValue("locator", UString(u"3:/p/a.vst3"));
    list.SetValue("name", UString(u"Name"));
    list.SetValue("vendor", UString(u"Vendor"));
    list.SetValue("version", 0xFFFF0001u);
    list.SetValue("type", 2);
    list.SetValue("enabled", true);
    list.SetValue("isShell", true);
    list.SetValue("hasNonSynth", false);
    return list;
}

TEST(PluginModuleInfoTest, ReadsAndWritesEveryFact) {
    PluginModuleInfo const info(StoredByHand());
    EXPECT_TRUE(info.GetLocator() == PluginLocator(kTechnologyVST3, u"/p/a.vst3"));
    EXPECT_EQ(info.GetName(), u"Name");
    EXPECT_EQ(info.GetVendor(), u"Vendor");
    EXPECT_EQ(info.GetVersion(), 0xFFFF0001u);
    EXPECT_EQ(info.GetType(), kTechnologyVST);
    EXPECT_TRUE(info.IsEnabled());
    EXPECT_TRUE(info.IsShell());
    EXPECT_FALSE(info.HasAnyNonSynthEffect());
    PropList written;
    info.Write(written);
    EXPECT_EQ(written, StoredByHand());
    EXPECT_FALSE(PluginModuleInfo(info.GetLocator(), u"", u"", 0, kTechnologyVST, true, true).HasAnyNonSynthEffect());
}

TEST(PluginModuleInfoTest, MissingKeysTakeTheDefaultsOfStorage) {
    PropList list;
    list.SetValue("locator", UString(u"2:/p/a.so"));
    PluginModuleInfo info(list);
    EXPECT_EQ(info.GetLocator().GetPath(), u"/p/a.so");
    EXPECT_EQ(info.GetType(), kTechnologyNone);
    EXPECT_TRUE(info.GetName().empty() && info.GetVendor().empty() && info.GetVersion() == 0);
    EXPECT_FALSE(info.IsEnabled() || info.IsShell());
    EXPECT_TRUE(info.HasAnyNonSynthEffect());

    info.SetEnabled(true);
    info.Read(PropList());
    EXPECT_TRUE(info.GetLocator() == PluginLocator());
    EXPECT_TRUE(info.IsEnabled());
}

} // namespace
