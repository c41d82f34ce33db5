#include "FilterFixture.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <mutex>

namespace {

using namespace vyntest;

class VSTFilterBusesTest : public VSTFilterTest {
protected:
    void Request(int inputs, int outputs) { filter->RequestBusConfiguration(Buses({inputs}), Buses({outputs})); }

    /// The buses as "Stereo In 2", those of a side chain as "Side-Chain 1 aside", inputs and outputs apart by "|".
    Texts Shown() const {
        Texts texts;
        auto const add = [&texts](AudioFilter::Buses const& buses) {
            for (AudioBusDescription const& bus : buses)
                texts.push_back(vyncore::string::UTF16to8(bus.GetName()) + ' ' + std::to_string(bus.GetChannelCount()) +
                                (bus.GetType() == AudioBusDescription::kTypeMain ? "" : " aside"));
        };
        add(filter->GetInputBuses());
        texts.emplace_back("|");
        add(filter->GetOutputBuses());
        return texts;
    }

    /// A block through whatever buses there are now: every channel that the effect counts has memory behind it.
    void ExpectBlockOfAllChannels() {
        SampleBlock in(filter->GetNumberOfInputChannels(), 32), out(filter->GetNumberOfOutputChannels(), 32);
        Resume(32);
        Render(in, out, 32);
        EXPECT_EQ(fixture->CountCalls(kVSTFixtureProcessReplacing), 1);
        VSTFixtureBlock const& block = fixture->Snapshot().block;
        EXPECT_EQ(block.nullChannels, 0);
        for (int channel = 0; channel < std::min(block.inputCount, filter->GetNumberOfInputChannels()); ++channel)
            EXPECT_EQ(block.inputs[channel], in.Get()[channel]) << channel;
        for (int channel = 0; channel < std::min(block.outputCount, filter->GetNumberOfOutputChannels()); ++channel)
            EXPECT_EQ(block.outputs[channel], out.Get()[channel]) << channel;
        filter->Suspend();
    }

    /// An effect that answers every request with these arrangements.
    static VSTFixtureConfiguration Answering(VSTFixtureArrangement const& input, VSTFixtureArrangement const& output) {
        VSTFixtureConfiguration configuration;
        configuration.arrangements = VSTFixtureArrangements::Configured;
        configuration.inputArrangement = input;
        configuration.outputArrangement = output;
        return configuration;
    }
};

TEST_F(VSTFilterBusesTest, CountsMakeOneBusOnEachSide) {
    struct Case {
        int inputs, outputs;
        Texts shown;
    };
    for (Case const& row :
         {Case{1, 2, {"Mono In 1", "|", "Stereo Out 2"}}, Case{2, 1, {"Stereo In 2", "|", "Mono Out 1"}},
          Case{6, 6, {"Surround 5.1 In 6", "|", "Surround 5.1 Out 6"}},
          Case{0, 8, {"Multi-Mono In 0", "|", "Multi-Mono Out 8"}},
          Case{4, 0, {"Multi-Mono In 4", "|", "Multi-Mono Out 0"}},
          Case{64, 98, {"Multi-Mono In 64", "|", "Multi-Mono Out 98"}}}) {
        VSTFixtureConfiguration configuration;
        Open(configuration.SetChannels(row.inputs, row.outputs));
        ASSERT_TRUE(filter);
        EXPECT_EQ(Shown(), row.shown);
        EXPECT_THAT(fixture->Names({effGetSpeakerArrangement, effSetSpeakerArrangement, effGetVstVersion}), IsEmpty());
    }
}

TEST_F(VSTFilterBusesTest, ArrangementsMakeTheMainBuses) {
    struct Case {
        std::int32_t type, channels;
        std::string input, output;
    };
    for (Case const& row :
         {Case{0, 1, "Mono In 1", "Mono Out 1"}, Case{0, 3, "Multi-Mono In 3", "Multi-Mono Out 3"},
          Case{1, 2, "Stereo In 2", "Stereo Out 2"}, Case{15, 6, "Surround 5.1 In 6", "Surround 5.1 Out 6"},
          Case{23, 8, "Multi-Mono In 8", "Multi-Mono Out 8"}, Case{-2, 6, "Multi-Mono In 6", "Multi-Mono Out 6"}}) {
        VSTFixtureArrangement const arrangement{.type = row.type, .numChannels = row.channels};
        Open(Answering(arrangement, arrangement).SetChannels(row.channels, row.channels));
        Request(2, 2);
        EXPECT_THAT(Shown(), ElementsAre(row.input, "|", row.output));
        for (auto const& channel : filter->GetInputBuses().front().GetLayout())
            EXPECT_TRUE(channel.GetLabel() == 0 || !row.input.starts_with("Multi"));
        ExpectBlockOfAllChannels();
    }
}

TEST_F(VSTFilterBusesTest, ChannelsBeyondTheArrangementsBecomeBusesOfTheirOwn) {
    constexpr std::int32_t kStereoPin = kVstPinIsStereo | 1;
    struct Case {
        int inputs, outputs;
        std::vector<std::int32_t> pins; ///< of inputs and outputs alike
        Texts shown;
    };
    for (Case const& row :
         {Case{4, 2, {1, 1, kStereoPin, 1}, {"Stereo In 2", "Stereo Side-Chain 2 aside", "|", "Stereo Out 2"}},
          Case{4,
               2,
               {1, 1, 1, kStereoPin},
               {"Stereo In 2", "Side-Chain 1 aside", "Side-Chain 1 aside", "|", "Stereo Out 2"}},
          Case{3, 2, {1, 1, kStereoPin}, {"Stereo In 2", "Side-Chain 1 aside", "|", "Stereo Out 2"}},
          Case{4, 2, {}, {"Stereo In 2", "Side-Chain 1 aside", "Side-Chain 1 aside", "|", "Stereo Out 2"}},
          Case{2,
               7,
               {1, 1, kStereoPin, kStereoPin, kStereoPin, 1, kStereoPin},
               {"Stereo In 2", "|", "Stereo Out 2", "Stereo Out 2", "Stereo Out 2", "Mono Out 1"}},
          Case{2, 4, {}, {"Stereo In 2", "|", "Stereo Out 2", "Mono Out 1", "Mono Out 1"}}}) {
        VSTFixtureConfiguration configuration = Answering({}, {});
        configuration.SetChannels(row.inputs, row.outputs);
        for (std::int32_t const pin : row.pins)
            configuration.AddPins(pin, pin);
        Open(configuration);
        Request(2, 2);
        EXPECT_EQ(Shown(), row.shown);
        ExpectBlockOfAllChannels();
    }
}

TEST_F(VSTFilterBusesTest, EffectIsAskedWithTheSpeakersOfTheChannelCount) {
    struct Case {
        int channels;
        std::int32_t type;
        Texts names;
        std::vector<float> degrees;
    };
    for (Case const& row :
         {Case{1, 0, {"M"}, {90}}, Case{2, 1, {"L", "R"}, {120, 60}},
          Case{6, 15, {"L", "R", "C", "Lfe", "Ls", "Rs"}, {120, 60, 90, 0, -160, -20}},
          Case{8, 23, {"L", "R", "C", "Lfe", "Ls", "Rs", "Lc", "Rc"}, {120, 60, 90, 0, -160, -20, -120, 20}},
          Case{3, -2, {"1", "2", "3"}, {90, 90, 90}},
          Case{10, -2, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}, std::vector<float>(10, 90)}}) {
        Open({});
        Request(row.channels, row.channels);
        for (VSTFixtureRequest const* const request :
             {&fixture->Snapshot().requestedInput, &fixture->Snapshot().requestedOutput}) {
            EXPECT_EQ(request->type, row.type);
            ASSERT_EQ(request->numChannels, row.channels);
            for (std::size_t i = 0; i < row.names.size(); ++i) {
                VstSpeakerProperties const& speaker = request->speakers[i];
                bool const isLfe = row.names[i] == "Lfe";
                EXPECT_EQ(speaker.name, row.names[i]);
                EXPECT_EQ(speaker.azimuth, isLfe ? 10.0f : std::atan(1.0f) * 4.0f * row.degrees[i] / 180.0f);
                EXPECT_EQ(speaker.elevation, isLfe ? 10.0f : 0.0f);
                EXPECT_EQ(speaker.radius, isLfe ? 0.0f : 1.0f);
                EXPECT_EQ(speaker.reserved, 0.0f);
                static constexpr char const* order[] = {"M", "L", "R", "C", "Lfe", "Ls", "Rs", "Lc", "Rc"};
                EXPECT_EQ(speaker.type, row.type == -2 ? 0
                                                       : std::find(std::begin(order), std::end(order), row.names[i]) -
                                                             std::begin(order));
            }
        }
    }
}

TEST_F(VSTFilterBusesTest, WhatTheEffectAnswersCountsWhetherItAcceptsOrNot) {
    for (bool const accepts : {false, true}) {
        VSTFixtureConfiguration configuration = Answering({}, {.type = 0, .numChannels = 1});
        configuration.acceptsArrangement = accepts;
        Open(configuration.SetChannels(2, 1));
        Request(6, 6);
        EXPECT_THAT(Shown(), ElementsAre("Stereo In 2", "|", "Mono Out 1"));
    }
    VSTFixtureConfiguration follows;
    follows.acceptsArrangement = follows.countsFollow = true;
    follows.arrangements = VSTFixtureArrangements::Requested;
    Open(follows);
    Request(6, 6);
    EXPECT_THAT(Shown(), ElementsAre("Surround 5.1 In 6", "|", "Surround 5.1 Out 6"));
    ExpectBlockOfAllChannels();
    Request(3, 10);
    EXPECT_THAT(Shown(), ElementsAre("Multi-Mono In 3", "|", "Multi-Mono Out 10"));
    ExpectBlockOfAllChannels();
    Request(1, 1);
    EXPECT_THAT(Shown(), ElementsAre("Mono In 1", "|", "Mono Out 1"));
    ExpectBlockOfAllChannels();
}

TEST_F(VSTFilterBusesTest, RequestThatTheEffectCannotBeAskedFallsBackToItsCounts) {
    Texts const byCounts{"Multi-Mono In 4", "|", "Stereo Out 2"};
    Texts const byArrangements{"Stereo In 2", "Side-Chain 1 aside", "Side-Chain 1 aside", "|", "Stereo Out 2"};
    VSTFixtureConfiguration configuration = Answering({}, {});
    configuration.vstVersion = 2300;
    Open(configuration.SetChannels(4, 2));
    Request(2, 2);
    EXPECT_EQ(Shown(), byArrangements);
    filter->RequestBusConfiguration(Buses({2, 2}), Buses({2}));
    filter->RequestBusConfiguration({}, Buses({2}));
    EXPECT_EQ(Shown(), byArrangements) << "none but requests of one bus each are looked at";
    fixture->ClearCalls();
    Request(2, 0);
    EXPECT_EQ(Shown(), byCounts);
    EXPECT_EQ(fixture->CountCalls(effSetSpeakerArrangement), 0);
    Request(0, 2);
    EXPECT_EQ(Shown(), byArrangements);
    EXPECT_THAT(fixture->Texts({effSetSpeakerArrangement}),
                ElementsAre("effSetSpeakerArrangement(0, null, pointer, 0)"));
    EXPECT_TRUE(fixture->Snapshot().requestedInput.null);

    configuration.vstVersion = 2299;
    Open(configuration);
    fixture->ClearCalls();
    Request(2, 2);
    EXPECT_EQ(Shown(), byCounts);
    EXPECT_THAT(fixture->TakeNames(), ElementsAre("effGetVstVersion"));
}

TEST_F(VSTFilterBusesTest, ArrangementsThatAreNoneOrNotTheEffectsOwnLeaveNoChannelWithoutMemory) {
    for (VSTFixtureArrangement const& bad :
         {VSTFixtureArrangement{.null = true}, VSTFixtureArrangement{.numChannels = 0},
          VSTFixtureArrangement{.numChannels = -1}, VSTFixtureArrangement{.type = -2, .numChannels = INT_MAX}})
        for (bool const input : {true, false}) {
            Open(input ? Answering(bad, {}) : Answering({}, bad));
            Request(2, 2);
            EXPECT_THAT(Shown(), ElementsAre("Stereo In 2", "|", "Stereo Out 2")) << bad.numChannels;
            ExpectBlockOfAllChannels();
        }
    for (std::int32_t const channels : {1, 3, 8}) {
        VSTFixtureArrangement const other{.type = -2, .numChannels = channels};
        Open(Answering(other, other));
        Request(2, 2);
        ExpectBlockOfAllChannels();
    }
}

TEST_F(VSTFilterBusesTest, StereoEffectShowsAsMonoWhenItCan) {
    struct Case {
        std::int32_t flags;
        int inputs, outputs; ///< requested
        std::int32_t version;
        bool isMono;
    };
    constexpr std::int32_t kCan = effFlagsCanReplacing | effFlagsCanMono;
    for (Case const& row :
         {Case{kCan, 1, 1, 2400, true}, Case{effFlagsCanReplacing, 1, 1, 2400, false}, Case{kCan, 1, 2, 2400, false},
          Case{kCan, 2, 1, 2400, false}, Case{kCan, 1, 1, 2000, true}, Case{kCan, 2, 2, 2400, false}}) {
        VSTFixtureConfiguration configuration;
        configuration.flags = row.flags;
        configuration.vstVersion = row.version;
        Open(configuration);
        Request(row.inputs, row.outputs);
        EXPECT_EQ(Shown(),
                  row.isMono ? Texts({"Mono In 1", "|", "Mono Out 1"}) : Texts({"Stereo In 2", "|", "Stereo Out 2"}));
        ExpectBlockOfAllChannels();
        Request(2, 2);
        EXPECT_THAT(Shown(), ElementsAre("Stereo In 2", "|", "Stereo Out 2")) << "each request begins afresh";
        ExpectBlockOfAllChannels();
    }
    // It needs an effect that ended up with two and two.
    VSTFixtureConfiguration configuration;
    configuration.flags |= effFlagsCanMono;
    Open(configuration.SetChannels(4, 2));
    Request(1, 1);
    EXPECT_THAT(Shown(), ElementsAre("Multi-Mono In 4", "|", "Stereo Out 2"));
}

TEST_F(VSTFilterBusesTest, SideChainsFitFewShapes) {
    for (int inputs = 0; inputs < 6; ++inputs)
        for (int outputs = 0; outputs < 4; ++outputs) {
            VSTFixtureConfiguration configuration;
            Open(configuration.SetChannels(inputs, outputs));
            bool const fits = (inputs == 2 && outputs == 1) || ((inputs == 3 || inputs == 4) && outputs == 2);
            EXPECT_EQ(filter->CanUseSideChaining(), fits) << inputs << ' ' << outputs;
        }
}

TEST_F(VSTFilterBusesTest, EffectThatThrowsIsShownByItsCounts) {
    for (std::int32_t const opcode : {effGetVstVersion, effGetSpeakerArrangement}) {
        VSTFixtureConfiguration configuration = Answering({.type = 0, .numChannels = 1}, {});
        Open(configuration.ThrowIn(opcode));
        EXPECT_NO_THROW(Request(2, 2));
        EXPECT_THAT(Shown(), ElementsAre("Stereo In 2", "|", "Stereo Out 2")) << opcode;
    }
    VSTFixtureConfiguration configuration = Answering({}, {});
    Open(configuration.SetChannels(3, 2).ThrowIn(effGetInputProperties));
    EXPECT_NO_THROW(Request(2, 2));
    EXPECT_THAT(Shown(), ElementsAre("Stereo In 2", "Side-Chain 1 aside", "|", "Stereo Out 2"));
    configuration.ThrowIn(effSetSpeakerArrangement);
    Open(configuration);
    EXPECT_NO_THROW(Request(2, 2));
    EXPECT_EQ(fixture->CountCalls(effGetSpeakerArrangement), 1) << "no answer is no";
}

} // namespace
