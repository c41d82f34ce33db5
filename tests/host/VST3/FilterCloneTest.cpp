#include "FilterFixture.h"

#include "fakes/RoutedFilter.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vyncore/debug/Trace.h"

namespace {

using namespace vyntest;

class FilterCloneTest : public FilterTest {
protected:
    ~FilterCloneTest() override { Catalogue().ClearExternalInfos(); }

    static AudioFilterDescriptorManager& Catalogue() { return AudioFilterDescriptorManager::GetInstance(); }

    void OpenAndList(FixtureConfiguration const& configuration) {
        Open(configuration);
        PluginLocator const locator(kTechnologyVST3, FixturePath16("configurable.vst3"));
        Catalogue().AddAudioFilterDescriptor(filter->CreateFilterDescriptor(locator, false));
    }

    boost::intrusive_ptr<AudioFilter> Clone() { return AudioFilter::Clone(filter); }
};

TEST_F(FilterCloneTest, ACopyHasStateBusesAndMapsAndIsSuspended) {
    OpenAndList({});
    filter->RequestBusConfiguration({Bus(1)}, {Bus(1)});
    filter->SetSampleRate(48000.0f);
    filter->SetBlockSize(512);
    filter->SetParameter(0, 0.25f);
    filter->SetPresetNameAndDirtyState({u"Warm", true});
    filter->SetMainTargetBus(Bus(2));
    filter->SetSideChainTargetBus(Bus(3));
    filter->SetChannelMap(MapOf({1}), AudioFilter::kDirectionInput);
    filter->SetChannelMap(MapOf({0, -1}), AudioFilter::kDirectionOutput);
    filter->SetUseChannelMap(true);
    fixture->ClearCalls();

    auto const copy = Clone();
    ASSERT_TRUE(copy && copy != filter);
    EXPECT_THAT(fixture->CallTexts({"setBusArrangements", "getState", "setState", "setActive"}),
                ElementsAre("Component.getState(8)", "Component.setBusArrangements(1)", "Component.getState(8)",
                            "Controller.getState(0)", "Component.setState(8)"))
        << "made, then fitted with buses, then set";
    EXPECT_EQ(copy->GetID(), filter->GetID());
    EXPECT_EQ(copy->GetInputBuses(), filter->GetInputBuses());
    EXPECT_EQ(copy->GetOutputBuses(), filter->GetOutputBuses());
    EXPECT_EQ(copy->GetNumberOfInputChannels(), 1);
    EXPECT_EQ(copy->GetSampleRate(), 48000.0f);
    EXPECT_EQ(copy->GetBlockSize(), 0);
    EXPECT_EQ(copy->GetParameter(0), 0.25f);
    EXPECT_EQ(copy->GetPresetNameAndDirtyState(), filter->GetPresetNameAndDirtyState());
    EXPECT_EQ(copy->GetMainTargetBus(), Bus(2));
    EXPECT_EQ(copy->GetSideChainTargetBus(), Bus(3));
    EXPECT_EQ(copy->GetChannelMap(AudioFilter::kDirectionInput), MapOf({1}));
    EXPECT_EQ(copy->GetChannelMap(AudioFilter::kDirectionOutput), MapOf({0, -1}));
    EXPECT_TRUE(copy->GetUseChannelMap());
    EXPECT_TRUE(copy->IsSuspended());
}

TEST_F(FilterCloneTest, ACopyOfARunningFilterGetsTheValuesThatWaitAndTakesNone) {
    OpenAndList({});
    Resume();
    filter->SetParameter(0, 0.75f);
    auto const copy = Clone();
    ASSERT_TRUE(copy);
    auto const expectTheValue = [&] {
        EXPECT_EQ(fixture->CountCalls("process"), 1);
        ASSERT_EQ(fixture->LastBlock().pointCount, 1);
        EXPECT_EQ(fixture->LastBlock().points[0].value, 0.75);
        fixture->ClearCalls();
    };
    copy->Resume();
    expectTheValue();
    filter->Suspend();
    expectTheValue();
    copy->Suspend();
}

TEST_F(FilterCloneTest, WhatCannotBeMadeGivesNull) {
    Open({});
    EXPECT_FALSE(AudioFilter::Clone(nullptr));
    EXPECT_FALSE(Clone()) << "not in the catalogue";
    OpenAndList({});
    fixture->Configure(FixtureConfiguration().Fail(FixtureFault::ComponentCreationFails));
    EXPECT_FALSE(Clone());
    fixture->Configure({});
    std::string traced;
    vyncore::debug::SetTraceTagLevel("VST3", 6);
    vyncore::debug::SetTraceSink([&](int, std::string_view, std::string_view text) { traced += text; });
    EXPECT_TRUE(Clone());
    vyncore::debug::SetTraceSink({});
    vyncore::debug::ResetTraceLevels();
    EXPECT_EQ(traced, "CreateAudioFilter(), path:" + FixturePath("configurable.vst3"));
    Catalogue().GetComponentDescriptorForID(filter->GetID())->SetEnabled(false);
    EXPECT_FALSE(Clone());
}

} // namespace
