#include "vynaudiofilterhost/presets/PresetData.h"

#include "host/HostTest.h"

#include <functional>
#include <limits>

namespace {

using namespace vyntest;
using Change = std::function<void(PresetData&)>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr unsigned char kBytes[] = {0, 255, 1, 0};

/// A list, a view on it, and how often that has announced a change.
struct Preset {
    explicit Preset(int type) {
        data.SetPresetType(PresetData::PresetType{type});
        data.GetPresetChangedSignal().connect([this](PresetData const& changed) { announced += &changed == &data; });
    }

    PropList list;
    PresetData data{list};
    int announced = 0;
};

void FillAll(PresetData& data) {
    data.SetVersion(1.5f);
    data.SetParamList({1, 2});
    data.SetChunkData(kBytes, 4);
    data.SetFactoryPresetName(u"Hall");
    data.GetCustomDataSection()->CreateList("deep").SetValue("key", kNaN);
}

TEST(PresetDataTest, WhatIsMissingOrOfAnotherKindReadsAsItsDefault) {
    PropList list;
    PresetData const data(list);
    EXPECT_TRUE(data.IsEmpty());
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_EQ(data.GetVersion(), 0.0f);
        EXPECT_EQ(data.GetPresetType(), PresetData::kPresetTypeParamList);
        EXPECT_EQ(data.GetFactoryPresetName(), u"");
        EXPECT_EQ(data.GetFactoryIndex(), -1);
        std::list<float> values{1.0f};
        data.GetParamList(values);
        PresetData::Bytes bytes{1};
        EXPECT_FALSE(data.GetChunkData(bytes));
        EXPECT_TRUE(values.empty() && bytes.empty());
        for (char const* const key : {"Type", "ParamList", "FactoryIndex", "ChunkData", "FactoryPreset", "CustomData"})
            list.SetValue(key, 1.5f);
        list.SetValue("Version", UString(u"1"));
    }
    EXPECT_TRUE(data.GetCustomDataSection()->IsEmpty());
}

TEST(PresetDataTest, ChangesAreAnnouncedByTheViewThatMadeThem) {
    Preset preset(0);
    PresetData const other(preset.list);
    FillAll(preset.data);
    preset.data.SetVersion(1.5f);
    preset.data.SetPresetType(PresetData::kPresetTypeCustomData);
    EXPECT_EQ(preset.announced, 6);
    preset.data.SetFactoryIndex(4);
    EXPECT_EQ(other.GetFactoryIndex(), 4);
    preset.data.SetChunkData(nullptr, 1);
    preset.data.Clear();
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_EQ(preset.announced, 6);
    preset.data.SetDataFromExistingPreset(other);
    EXPECT_EQ(preset.announced, 7);
}

TEST(PresetDataTest, AChunkComesBackFromEitherKindOfText) {
    PropList list;
    PresetData data(list);
    PresetData::Bytes bytes;
    data.SetChunkData(kBytes, 4);
    for (auto const& [next, whole] : {std::pair{u"AP8B\nAA==", true}, {u"AP8BAA=", true}, {u"", false}}) {
        EXPECT_EQ(data.GetChunkData(bytes), whole);
        EXPECT_EQ(bytes, whole ? PresetData::Bytes(kBytes, kBytes + 4) : PresetData::Bytes());
        list.SetValue("ChunkData", UString(next));
    }
    data.SetChunkData(kBytes, 0);
    EXPECT_FALSE(data.GetChunkData(bytes));
    EXPECT_EQ(list.GetValues().at("ChunkData"), PropList::Value(vyncore::UTF8String()));
}

TEST(PresetDataTest, ACopyIsEqualUntilSomethingThatCountsDiffers) {
    Change const changes[] = {
        [](auto& data) { data.SetPresetType(PresetData::PresetType{data.GetPresetType() ^ 1}); },
        [](auto& data) { data.SetVersion(1.75f); },
        [](auto& data) { data.SetParamList(std::list<float>(3, 1.0f)); },
        [](auto& data) { data.SetParamList(std::list<float>(2, 1.0f)); },
        [](auto& data) { data.SetChunkData(kBytes, 3); },
        [](auto& data) { data.SetFactoryPresetName(u"hall"); },
        [](auto& data) { data.SetFactoryIndex(9); },
        [](auto& data) { data.GetCustomDataSection()->SetValue("key", 1); },
    };
    // A text for each type from -1, a digit for each change: whether the presets are equal all the same.
    int type = -1;
    for (char const* equal : {"00000000", "00001111", "00110111", "00111011", "00000110", "00000000"}) {
        for (Change const& change : changes) {
            Preset one(type);
            FillAll(one.data);
            Preset copy(0);
            copy.data.SetDataFromExistingPreset(one.data);
            EXPECT_EQ(copy.data == one.data, type >= 0 && type < 4) << type;
            change(copy.data);
            EXPECT_EQ(one.data == copy.data, *equal++ == '1') << type << " " << &change - changes;
        }
        ++type;
    }
}

TEST(PresetDataTest, WhatIsNoNumberEqualsNothingAndWhatIsAbsentIsEmpty) {
    for (int const type : {0, 1, 2, 3}) {
        Preset one(type);
        Preset const other(type);
        EXPECT_TRUE(one.data == other.data);
        EXPECT_EQ(one.list.FindList("CustomData") && other.list.FindList("CustomData"), type == 3);
        one.data.SetParamList({kNaN});
        EXPECT_EQ(one.data == one.data, type == 1 || type == 2);
    }
}

} // namespace
