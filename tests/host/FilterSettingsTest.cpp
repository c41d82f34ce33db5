#include "host/HostTest.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/presets/PresetList.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace vyntest;
using testing::NanSensitiveFloatEq;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Two parameters and some factory presets; keeps what it is told.
class SettingsFilter : public AudioFilter {
public:
    SettingsFilter() : AudioFilter(u"settings", u"Settings") {
        ConnectPresetChanged([this] { Note("changed"); });
        ConnectAutomatedParameterChange([this](int, float) { Note("automated"); });
    }

    void Note(std::string const& call) { calls.push_back(call + (IsLoadingSettings() ? " in load" : "")); }

    int GetParameterCount() const override { return 2; }
    float GetParameter(int index) const override { return values[static_cast<std::size_t>(index)]; }
    void SetParameter(int index, float value) override {
        AudioFilter::SetParameter(index, value);
        values[static_cast<std::size_t>(index)] = throws ? throw std::runtime_error("the plug-in gave up") : value;
    }

    float GetCurrentPresetVersion() const override { return 1.5f; }
    bool DoPresetsUseChunkData() const override { return usesChunks; }
    bool LoadChunkData(PresetData const&) override { return Note("chunk"), false; }
    bool LoadCustomData(PresetData const&) override { return Note("custom"), true; }

    int GetNumFactoryPresets() const override { return static_cast<int>(factoryPresets.size()); }
    UString GetFactoryPresetName(int index) override { return factoryPresets.at(static_cast<std::size_t>(index)); }
    void SetFactoryPreset(int index) override { Note("factory " + std::to_string(index)); }

    std::vector<std::string> calls;
    std::vector<float> values{0.25f, 0.75f};
    std::vector<UString> factoryPresets{u"Hall", u"", u"Room", u"Hall", u"hall"};
    bool usesChunks = false;
    bool throws = false;
};

class FilterSettingsTest : public testing::Test {
protected:
    bool Load() {
        mFilter.calls.clear();
        mDirty = mFilter.GetParameterDirtyCount();
        return mFilter.LoadSettings(mPreset);
    }

    void ExpectNothingLoaded(float version, int type, std::size_t parameters) {
        mPreset.SetVersion(version);
        mPreset.SetPresetType(PresetData::PresetType{type});
        mPreset.SetParamList(std::list<float>(parameters, 1.0f));
        EXPECT_FALSE(Load());
        EXPECT_THAT(mFilter.calls, ElementsAre("changed"));
        EXPECT_THAT(mFilter.values, ElementsAre(0.25f, 0.75f));
        EXPECT_EQ(mFilter.GetParameterDirtyCount(), mDirty + 1);
    }

    SettingsFilter mFilter;
    PropList mList;
    PresetData mPreset{mList};
    int mDirty = 0;
};

TEST_F(FilterSettingsTest, ParametersSurviveSavingAndLoading) {
    mFilter.values = {0.125f, kNaN};
    mPreset.SetFactoryPresetName(u"old");
    mFilter.SaveSettings(mPreset);
    EXPECT_EQ(mPreset.GetFactoryPresetName(), u"");
    mFilter.values = {0.0f, 0.0f};
    EXPECT_TRUE(Load());
    EXPECT_THAT(mFilter.values, ElementsAre(0.125f, NanSensitiveFloatEq(kNaN)));
    EXPECT_THAT(mFilter.calls, ElementsAre("automated in load", "automated in load", "changed"));
    EXPECT_EQ(mFilter.GetParameterDirtyCount(), mDirty + 3);
}

TEST_F(FilterSettingsTest, WhatDoesNotFitChangesNothingButIsAnnounced) {
    mPreset.SetFactoryPresetName(u"Plate");
    for (std::size_t const count : {0u, 1u, 3u})
        ExpectNothingLoaded(1.5f, 0, count);
    for (float const version : {1.25f, kNaN})
        ExpectNothingLoaded(version, 0, 2);
    for (int const type : {1, 2, 4, -1})
        ExpectNothingLoaded(1.5f, type, 2);
    mFilter.usesChunks = true;
    ExpectNothingLoaded(1.5f, 0, 2);
    ExpectNothingLoaded(1.25f, 1, 2);
}

TEST_F(FilterSettingsTest, AChunkCountsAsLoadedWhateverTheFilterSays) {
    mFilter.usesChunks = true;
    mPreset.SetParamList({1});
    mFilter.SaveSettings(mPreset);
    EXPECT_EQ(mList.GetValues().size(), 2u);
    for (char const* const call : {"chunk in load", "custom in load"}) {
        EXPECT_TRUE(Load());
        EXPECT_THAT(mFilter.calls, ElementsAre(call, "changed"));
        mPreset.SetPresetType(PresetData::kPresetTypeCustomData);
    }
}

TEST_F(FilterSettingsTest, AFactoryPresetIsFoundByItsPlaceOrByItsName) {
    PropList list;
    PresetList presets(list);
    presets.AppendPreset(u"old");
    mFilter.GetFactoryDefaultPresets(presets);
    EXPECT_THAT(list.GetListNames(), ElementsAre("Hall", "Room", "hall"));
    mPreset.SetDataFromExistingPreset(*presets.GetPreset(u"Hall"));
    for (int const index : {-1, 2, 5, -7, std::numeric_limits<int>::max()}) {
        mPreset.SetFactoryIndex(index);
        EXPECT_TRUE(Load());
        EXPECT_THAT(mFilter.calls, ElementsAre("factory 0 in load", "factory 3 in load", "changed"));
    }
    mPreset.SetFactoryIndex(3);
    EXPECT_TRUE(Load());
    EXPECT_THAT(mFilter.calls, ElementsAre("factory 3 in load", "changed"));
    mPreset.SetFactoryPresetName(u"HALL");
    ExpectNothingLoaded(1.5f, 2, 0);
}

TEST_F(FilterSettingsTest, AnExceptionEndsTheLoadAndGoesOn) {
    mFilter.SaveSettings(mPreset);
    mFilter.throws = true;
    EXPECT_THROW(Load(), std::runtime_error);
    EXPECT_THAT(mFilter.calls, ElementsAre("changed"));
    EXPECT_EQ(mFilter.GetParameterDirtyCount(), mDirty + 2);

    mFilter.throws = false;
    mFilter.ConnectPresetChanged([] { throw std::logic_error("a listener"); });
    EXPECT_THROW(Load(), std::logic_error);
    EXPECT_EQ(mFilter.GetParameterDirtyCount(), mDirty + 3);
}

} // namespace
