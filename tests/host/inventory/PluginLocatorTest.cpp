#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include "host/HostTest.h"

namespace {

using namespace vyntest;

TEST(PluginLocatorTest, TextFormReadsBackExactlyAndWhatCannotBeParsedGivesNoTechnology) {
    struct {
        char16_t const* text;
        int technology;
        char16_t const* path;
        bool canonical = false;
    } const cases[] = {
        {u"0:", kTechnologyNone, u"", true},
        {u"3:C:\\Plugins\\a.vst3", kTechnologyVST3, u"C:\\Plugins\\a.vst3", true},
        {u"2::/odd name.so ", kTechnologyVST, u":/odd name.so ", true},
        {u"2147483647:/a", 2147483647, u"/a", true},
        {u"", kTechnologyNone, u""},
        {u"3", kTechnologyNone, u""},
        {u"x:abc", kTechnologyNone, u"abc"},
        {u":abc", kTechnologyNone, u"abc"},
        {u"99999999999:abc", kTechnologyNone, u"abc"},
    };
    for (auto const& [text, technology, path, canonical] : cases) {
        PluginLocator locator(kTechnologyVST, u"/left/over.so");
        locator.FromString(text);
        EXPECT_EQ(locator.GetTechnologyType(), technology);
        EXPECT_EQ(locator.GetPath(), path);
        EXPECT_EQ(locator.ToString() == text, canonical);
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
