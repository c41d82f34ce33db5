#include "FilterFixture.h"

#include "support/NoAllocationScope.h"

namespace {

using namespace vyntest;

using FilterBusesTest = FilterTest;

constexpr std::uint64_t kMono = 0x80000;
constexpr std::uint64_t kAmbisonicThirdOrder = 0x3FFC000F00000;

TEST_F(FilterBusesTest, BusesAreReadWithNamesTypesAndLayouts) {
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(kMono), FixtureBus::Make(0), FixtureBus::Make(3, u"Key", 1)},
                           {FixtureBus::Make(0x3F, u"Surround")});
    configuration.eventInputCount = 1;
    Open(configuration);
    ASSERT_EQ(filter->GetInputBuses().size(), 2u);
    EXPECT_EQ(filter->GetInputBuses()[0].GetName(), u"Mono");
    EXPECT_EQ(filter->GetInputBuses()[1].GetName(), u"Key");
    EXPECT_EQ(filter->GetInputBuses()[1].GetType(), AudioBusDescription::kTypeSideChain);
    EXPECT_TRUE(filter->CanUseSideChaining());
    EXPECT_EQ(filter->GetOutputBuses()[0].GetChannelCount(), 6);
}

TEST_F(FilterBusesTest, RequestsAreAnsweredByWhatThePluginThenSays) {
    struct Case {
        FixtureBusAnswer answer;
        int requested;
        int answered;
        bool sent;
    };
    for (Case const& row :
         {Case{FixtureBusAnswer::Accept, 1, 1, true}, Case{FixtureBusAnswer::Accept, 6, 6, true},
          Case{FixtureBusAnswer::Refuse, 1, 2, true}, Case{FixtureBusAnswer::MonoOnly, 2, 1, true},
          Case{FixtureBusAnswer::AcceptNothing, 6, 2, true}, Case{FixtureBusAnswer::Accept, 3, 2, false}}) {
        Open({.busAnswer = row.answer});
        fixture->ClearCalls();
        filter->RequestBusConfiguration(Buses({row.requested}), Buses({row.requested}));
        EXPECT_EQ(filter->GetNumberOfOutputChannels(), row.answered);
        EXPECT_EQ(filter->GetNumberOfInputChannels(), row.answered);
        EXPECT_EQ(fixture->CountCalls("setBusArrangements"), row.sent ? 1 : 0);
    }
    Open({});
    fixture->ClearCalls();
    for (auto const& [in, out] : {std::pair(3, 2), std::pair(2, 3)})
        filter->RequestBusConfiguration(Buses({in}), Buses({out}));
    EXPECT_EQ(fixture->CountCalls("setBusArrangements"), 0) << "three channels have no arrangement";
    filter->RequestBusConfiguration(Buses({1}), Buses({6}));
    EXPECT_EQ(filter->GetNumberOfInputChannels(), 1);
    EXPECT_EQ(filter->GetNumberOfOutputChannels(), 6);
}

// What a plug-in has and the filter doesn't show reads silence and writes where nobody reads; nothing moves up.
TEST_F(FilterBusesTest, PluginGetsAllTheChannelsThatItCounts) {
    FixtureConfiguration configuration;
    configuration.silenceFlags = false;
    FixtureBus unreadable = FixtureBus::Make(3, u"Unreadable");
    unreadable.arrangementFails = true;
    configuration.SetBuses({unreadable, FixtureBus::Make(kAmbisonicThirdOrder), FixtureBus::Make(kMono)},
                           {FixtureBus::Make(0x8000000000000003), unreadable, FixtureBus::Make(3)});
    SetFixtureText(configuration.sdkVersion, std::string_view("VST 3.6.7"));
    Open(configuration);
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->GetNumberOfInputChannels(), 4 + 1);
    EXPECT_EQ(filter->GetNumberOfOutputChannels(), 2 + 2);
    Resume(64);
    SampleBlock in(5, 64), out(4, 64);
    {
        NoAllocationScope const guard;
        Render(in, out, 64);
    }
    FixtureBlock const& seen = fixture->LastBlock();
    EXPECT_EQ(seen.inputs.count, 3);
    EXPECT_THAT(std::vector(seen.inputs.channels, seen.inputs.channels + 3), ElementsAre(2, 16, 1));
    EXPECT_THAT(std::vector(seen.outputs.channels, seen.outputs.channels + 3), ElementsAre(3, 2, 2));
    for (int channel = 0; channel < 19; ++channel)
        ASSERT_NE(seen.inputs.buffers[channel], nullptr) << channel;
    EXPECT_EQ(seen.inputs.buffers[2], in[0].data());
    EXPECT_EQ(seen.inputs.buffers[18], in[4].data());
    EXPECT_EQ(seen.inputs.buffers[6][63], 0.0f);
    EXPECT_EQ(seen.inputs.silence[0], 3u);
    EXPECT_EQ(seen.inputs.silence[1], 0xFFF0u);
    EXPECT_EQ(seen.outputs.buffers[5], out[2].data());
}

TEST_F(FilterBusesTest, RequestLeavesOutWhatHasNoArrangementAndNeedsBothSides) {
    FixtureConfiguration configuration;
    configuration.SetBuses({}, {FixtureBus::Make(3)});
    configuration.eventOutputCount = 1;
    Open(configuration);
    fixture->ClearCalls();
    filter->RequestBusConfiguration({}, Buses({1}));
    EXPECT_EQ(fixture->CountCalls("setBusArrangements"), 0) << "an instrument keeps its buses";
    EXPECT_EQ(filter->GetNumberOfOutputChannels(), 2);
    filter->RequestBusConfiguration(Buses({2, 3, 1}), Buses({2}));
    EXPECT_EQ(fixture->Snapshot().requestedInputs[0], 3u);
    EXPECT_EQ(fixture->Snapshot().requestedInputs[1], 0x80000u);
    filter->RequestBusConfiguration(AudioFilter::Buses(2000, Buses({2})[0]), Buses({2}));
    EXPECT_EQ(fixture->CountCalls("setBusArrangements"), 1) << "more buses than any plug-in has";
}

TEST_F(FilterBusesTest, BusWithoutInfoIsAMainBusNamedByItsArrangementAndNotActivated) {
    FixtureConfiguration configuration;
    FixtureBus unknown = FixtureBus::Make(0x3F, u"Unseen", 1);
    unknown.infoFails = true;
    configuration.SetBuses({unknown}, {FixtureBus::Make(3)});
    Open(configuration);
    ASSERT_EQ(filter->GetInputBuses().size(), 1u);
    EXPECT_EQ(filter->GetInputBuses()[0].GetName(), u"5.1");
    EXPECT_EQ(filter->GetInputBuses()[0].GetType(), AudioBusDescription::kTypeMain);
    auto const calls = fixture->Calls();
    for (FixtureCall const& call : calls)
        EXPECT_FALSE(std::string(call.name) == "activateBus" && call.extra[1] == 0) << "an input bus was activated";
    EXPECT_EQ(fixture->CountCalls("activateBus"), 1);
}

TEST_F(FilterBusesTest, InstrumentPlaysWithoutInputBuffers) {
    FixtureConfiguration configuration;
    SetFixtureText(configuration.subCategories, std::string_view("Instrument|Synth"));
    configuration.SetBuses({}, {FixtureBus::Make(3)});
    configuration.eventInputCount = 1;
    Open(configuration);
    ASSERT_TRUE(filter);
    EXPECT_TRUE(filter->IsMusicDevice());
    EXPECT_TRUE(filter->GetInputBuses().empty());
    Resume(64);
    filter->ScheduleMIDIEvent(true, 0, 0x90, 60, 100);
    SampleBlock out(2, 64);
    ChannelFlags silent;
    filter->ProcessWithMapping(nullptr, out.Get(), 64, ChannelFlags(), silent);
    EXPECT_EQ(fixture->LastBlock().inputs.count, 0);
    EXPECT_EQ(fixture->LastBlock().eventCount, 1);
    EXPECT_EQ(out[1][63], 0.0f);
}

// The lists are the host's memory; what a plug-in leaves in them must not reach the next slice.
TEST_F(FilterBusesTest, PluginThatSpoilsItsOutputsSpoilsItsOwnSliceAlone) {
    Open({.spoilsOutputs = true});
    Resume();
    for (int block = 0; block < 2; ++block) {
        SampleBlock in(2, 2500), out(2, 2500);
        std::fill_n(out.Get()[1], 2500, -1.0f);
        Render(in, out, 2500);
        EXPECT_EQ(fixture->LastBlock().outputs.count, 1);
        EXPECT_EQ(fixture->LastBlock().outputs.channels[0], 2);
        EXPECT_EQ(fixture->LastBlock().outputs.buffers[1], out[1].data() + 2048);
        for (std::size_t const sample : {0u, 1024u, 2499u})
            EXPECT_EQ(out[1][sample], in[1][sample]) << block;
    }
}

} // namespace
