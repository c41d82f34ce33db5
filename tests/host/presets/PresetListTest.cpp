#include "vynaudiofilterhost/presets/PresetList.h"
#include "vyncore/proplist/PropList.h"

#include <gtest/gtest.h>

namespace {

using namespace vynaudiofilterhost;
using Names = std::set<vyncore::UString>;

TEST(PresetListTest, ANameIsGivenOnceAndEachChangeAnnounced) {
    vyncore::proplist::PropList list;
    PresetList presets(list);
    int announced = 0;
    presets.GetPresetListChangedSignal().connect([&](PresetList const& changed) { announced += &changed == &presets; });
    list.SetValue("B", 1);
    EXPECT_FALSE(presets.GetPreset(u"B"));
    auto const preset = presets.AppendPreset(u"K\u00e4lte \U0001F600");
    preset->SetVersion(2.0f);
    EXPECT_FALSE(presets.AppendPreset(u"K\u00e4lte \U0001F600"));
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(list.FindList("K\xC3\xA4lte \xF0\x9F\x98\x80"), preset->GetRawData());
    auto const again = presets.GetPreset(u"K\u00e4lte \U0001F600");
    EXPECT_NE(again, preset);
    EXPECT_EQ(again->GetVersion(), 2.0f);

    EXPECT_TRUE(presets.AppendPreset(u"B")->IsEmpty());
    Names names{u"old"};
    presets.GetPresetNames(names);
    EXPECT_EQ(names, (Names{u"B", u"K\u00e4lte \U0001F600"}));
    presets.RemovePreset(u"B");
    presets.RemovePreset(u"B");
    EXPECT_FALSE(presets.GetPreset(u"B"));
    EXPECT_EQ(announced, 4);
    presets.Clear();
    EXPECT_EQ(announced, 5);
    EXPECT_TRUE(list.IsEmpty());
}

} // namespace
