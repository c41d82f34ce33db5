#include "FilterFixture.h"

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using testing::ElementsAre;
using vynmediatypes::AudioBusDescription;
using vyntest::Block;

using FilterBusRequestTest = vyntest::FilterTest;

AudioFilter::Buses OneBus(int channels) {
    return {
        {u"", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(channels)), AudioBusDescription::kTypeMain}};
}

TEST_F(FilterBusRequestTest, InputsAndOutputsAreAskedForEachByTheirOwnCount) {
    Open({});
    fixture->ClearCalls();
    for (auto const& [in, out] : {std::pair(3, 2), std::pair(2, 3)})
        filter->RequestBusConfiguration(OneBus(in), OneBus(out));
    EXPECT_EQ(fixture->CountCalls("setBusArrangements"), 0) << "three channels have no arrangement";
    EXPECT_EQ(filter->GetNumberOfInputChannels(), 2);
    filter->RequestBusConfiguration(OneBus(1), OneBus(6));
    EXPECT_EQ(fixture->Snapshot().requestedInputs[0], 0x80000u);
    EXPECT_EQ(fixture->Snapshot().requestedOutputs[0], 0x3Fu);
    EXPECT_EQ(filter->GetNumberOfInputChannels(), 1);
    EXPECT_EQ(filter->GetNumberOfOutputChannels(), 6);
}

TEST_F(FilterBusRequestTest, BusWithoutInfoIsAMainBusNamedByItsArrangementAndNotActivated) {
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

TEST_F(FilterBusRequestTest, InstrumentPlaysWithoutInputBuffers) {
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
    Block out(2, 64);
    ChannelFlags silent;
    filter->ProcessWithMapping(nullptr, out.Get(), 64, ChannelFlags(), silent);
    EXPECT_EQ(fixture->LastBlock().inputs.count, 0);
    EXPECT_EQ(fixture->LastBlock().eventCount, 1);
    EXPECT_EQ(out[1][63], 0.0f);
    filter->Suspend();
}

// The lists are the host's memory; what a plug-in leaves in them must not reach the next slice.
TEST_F(FilterBusRequestTest, PluginThatSpoilsItsOutputsSpoilsItsOwnSliceAlone) {
    FixtureConfiguration configuration;
    configuration.spoilsOutputs = true;
    Open(configuration);
    Resume();
    for (int block = 0; block < 2; ++block) {
        Block in(2, 2500), out(2, 2500);
        std::fill_n(out.Get()[1], 2500, -1.0f);
        Render(in, out, 2500);
        EXPECT_EQ(fixture->LastBlock().outputs.count, 1);
        EXPECT_EQ(fixture->LastBlock().outputs.channels[0], 2);
        EXPECT_EQ(fixture->LastBlock().outputs.buffers[1], out[1].data() + 2048);
        for (std::size_t const sample : {0u, 1024u, 2499u})
            EXPECT_EQ(out[1][sample], in[1][sample]) << block;
    }
    filter->Suspend();
}

} // namespace
