#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"

#include "vyncore/proplist/PropList.h"

#include <gtest/gtest.h>

namespace vynaudiofilterhost {
namespace {

using vyncore::proplist::PropList;

TEST(PluginModuleInfoTest, StoredCopyHoldsEveryFact) {
    PluginLocator const locator(kTechnologyVST3, u"/p/a.vst3");
    PluginModuleInfo info(locator, u"Name", u"Vendor", 0xFFFF0001u, kTechnologyVST, true, true);
    EXPECT_FALSE(info.HasAnyNonSynthEffect());

    PropList list;
    info.Write(list);
    PluginModuleInfo const copy(list);
    EXPECT_TRUE(copy.GetLocator() == locator);
    EXPECT_EQ(copy.GetName(), u"Name");
    EXPECT_EQ(copy.GetVendor(), u"Vendor");
    EXPECT_EQ(copy.GetVersion(), 0xFFFF0001u);
    EXPECT_EQ(copy.GetType(), kTechnologyVST);
    EXPECT_TRUE(copy.IsEnabled());
    EXPECT_TRUE(copy.IsShell());
    EXPECT_FALSE(copy.HasAnyNonSynthEffect());
}

TEST(PluginModuleInfoTest, MissingKeysTakeTheDefaultsOfStorage) {
    PropList list;
    list.SetValue("locator", vyncore::UString(u"2:/p/a.so"));
    PluginModuleInfo info(list);
    EXPECT_EQ(info.GetLocator().GetPath(), u"/p/a.so");
    EXPECT_EQ(info.GetType(), kTechnologyNone);
    EXPECT_FALSE(info.IsEnabled());
    EXPECT_TRUE(info.HasAnyNonSynthEffect());

    info.SetEnabled(true);
    info.Read(PropList());
    EXPECT_TRUE(info.GetLocator() == PluginLocator());
    EXPECT_TRUE(info.IsEnabled());
}

} // namespace
} // namespace vynaudiofilterhost
