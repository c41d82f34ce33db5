#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include <gtest/gtest.h>

namespace vynaudiofilterhost {
namespace {

PluginLocator FromText(vyncore::UString const& text) {
    PluginLocator locator(kTechnologyVST, u"/left/over.so");
    locator.FromString(text);
    return locator;
}

TEST(PluginLocatorTest, TextFormReadsBackExactly) {
    struct {
        PluginLocator locator;
        char16_t const* text;
    } const cases[] = {
        {PluginLocator(), u"0:"},
        {PluginLocator(kTechnologyVST3, u"C:\\Plugins\\a.vst3"), u"3:C:\\Plugins\\a.vst3"},
        {PluginLocator(kTechnologyVST, u":/odd name.so "), u"2::/odd name.so "},
        {PluginLocator(static_cast<TechnologyType>(2147483647), u"/a"), u"2147483647:/a"},
    };
    for (auto const& [locator, text] : cases) {
        EXPECT_EQ(locator.ToString(), text);
        auto const back = FromText(text);
        EXPECT_EQ(back.GetTechnologyType(), locator.GetTechnologyType());
        EXPECT_EQ(back.GetPath(), locator.GetPath());
    }
}

TEST(PluginLocatorTest, TextsThatCannotBeParsedGiveNoTechnology) {
    struct {
        char16_t const* text;
        char16_t const* path;
    } const cases[] = {{u"", u""}, {u"3", u""}, {u"x:abc", u"abc"}, {u":abc", u"abc"}, {u"99999999999:abc", u"abc"}};
    for (auto const& [text, path] : cases) {
        auto const locator = FromText(text);
        EXPECT_EQ(locator.GetTechnologyType(), kTechnologyNone);
        EXPECT_EQ(locator.GetPath(), path);
    }
}

TEST(PluginLocatorTest, ComparesTechnologyBeforeFile) {
    PluginLocator const vst(kTechnologyVST, u"/z/b.so");
    PluginLocator const sameFile(kTechnologyVST, u"/z/./b.so");
    PluginLocator const vst3(kTechnologyVST3, u"/z/b.so");
    PluginLocator const earlierFile(kTechnologyVST3, u"/a/b.so");

    EXPECT_TRUE(vst == sameFile);
    EXPECT_FALSE(vst < sameFile || sameFile < vst);
    EXPECT_TRUE(vst != vst3);
    EXPECT_TRUE(vst < earlierFile && !(earlierFile < vst));
    EXPECT_TRUE(earlierFile < vst3 && !(vst3 < earlierFile));
}

} // namespace
} // namespace vynaudiofilterhost
