#include "vynhost/OfflineRenderer.h"
#include "vynhost/CommandError.h"
#include "vynhost/MidiSong.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <map>
#include <numeric>

using namespace vynhost;
using vynaudiofilterhost::AudioFilter;
using vynaudiofilterhost::ChannelFlags;
using vynmediatypes::AudioBusDescription;

namespace {

TrackRequest Plain(int channels) {
    return {.file = vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(channels))};
}

// A filter that delays and amplifies, and that can be told to misbehave.
class TestFilter : public AudioFilter {
public:
    explicit TestFilter(int inputs = 1, int outputs = 1) : AudioFilter(u"test", u"Test") {
        if (inputs > 0)
            AddInputBus({u"In", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(inputs)), {}});
        AddOutputBus({u"Out", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(outputs)), {}});
    }

    void Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags) override {
        flagsSeen.push_back(inFlags.GetBits());
        blocks.push_back(numSamples);
        for (int channel = 0; blocks.size() == 1 && channel < GetNumberOfInputChannels(); ++channel)
            firstSamples.push_back(in[channel][0]);
        if (learnedLatency)
            reportedLatency = *learnedLatency;
        outFlags = silentOutputs;
        if (static_cast<int>(blocks.size()) > blocksUntilFailure)
            return;
        for (int channel = 0; channel < GetNumberOfOutputChannels(); ++channel) {
            std::deque<float>& line = mLines[channel];
            line.resize(std::max(line.size(), static_cast<std::size_t>(delay)));
            for (int i = 0; i < numSamples; ++i) {
                line.push_back(GetInputBuses().empty() ? 1 : gain * in[channel % GetNumberOfInputChannels()][i]);
                out[channel][i] = line.front();
                line.pop_front();
            }
        }
    }
    int GetMaxProcessingBlockSize() const override { return maxBlock; }
    int GetInitialDelay() const override { return reportedLatency; }
    int GetTail() const override { return tail; }
    void SetParameter(int, float value) override { tail = static_cast<int>(value * 100); }
    using AudioFilter::AddInputBus;
    using AudioFilter::AddOutputBus;

    int delay = 0, reportedLatency = 0, tail = 0, maxBlock = 1024, blocksUntilFailure = 1 << 30;
    float gain = 1;
    std::optional<int> learnedLatency;
    std::vector<float> firstSamples; ///< of each input channel
    ChannelFlags silentOutputs;
    std::vector<std::uint64_t> flagsSeen;
    std::vector<int> blocks;

private:
    std::map<int, std::deque<float>> mLines;
};

struct Rendered {
    RenderOutcome outcome;
    std::vector<std::vector<float>> channels;
};

// Sends 1, 2, 3, … through the filter; channel c of the source is that times (c + 1). Side-chain channels count on.
Rendered Render(AudioFilter& filter, RenderSetup setup) {
    setup.sampleRate = 1000.0;
    OfflineRenderer renderer(filter, setup);
    Rendered rendered;
    rendered.channels.resize(static_cast<std::size_t>(renderer.GetOutputChannels()));
    int next = 1;
    int const sourceChannels = static_cast<int>(setup.track.file.size() + setup.track.sideChain.size());
    auto const source = [&](float* const* channels, int samples) {
        for (int i = 0; i < samples; ++i, ++next)
            for (int channel = 0; channel < sourceChannels; ++channel)
                channels[channel][i] = static_cast<float>(next * (channel + 1));
    };
    auto const sink = [&](float* const* channels, int samples) {
        for (std::size_t channel = 0; channel < rendered.channels.size(); ++channel)
            rendered.channels[channel].insert(rendered.channels[channel].end(), channels[channel],
                                              channels[channel] + samples);
    };
    rendered.outcome = renderer.Run(source, sink);
    return rendered;
}

std::vector<float> Counting(std::size_t count, std::size_t zeros = 0) {
    std::vector<float> values(count);
    std::iota(values.begin(), values.end(), 1.0F);
    values.resize(count + zeros);
    return values;
}

TEST(OfflineRendererTest, OutputIsInStepWithTheInputWhateverTheBlockSize) {
    for (int const blockSize : {1, 7, 64, 1024, 65536}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->delay = filter->reportedLatency = 100;
        filter->tail = 5;
        Rendered const rendered = Render(*filter, {.track = Plain(1), .samples = 3000, .blockSize = blockSize});
        EXPECT_EQ(rendered.channels[0], Counting(3000, 5)) << blockSize;
        EXPECT_EQ(rendered.outcome.latency, 100);
        EXPECT_EQ(rendered.outcome.samples, 3005);
        // The filter's silence flags hold for all of a block only when it doesn't cut the block up.
        EXPECT_LE(*std::ranges::max_element(filter->blocks), std::min(blockSize, 1024));
        EXPECT_TRUE(filter->IsSuspended());
    }
}

TEST(OfflineRendererTest, TailIsThatBehindTheLastSampleWhateverTheBlockSize) {
    for (int const blockSize : {1, 7, 64, 300, 1024}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->tail = 5;
        RenderSetup setup{.track = Plain(1), .samples = 300, .blockSize = blockSize};
        setup.automation.Add(0, {{{299, {0.5F}}, {301, {1}}}, true, {}});
        EXPECT_EQ(Render(*filter, setup).channels[0], Counting(300, 50)) << blockSize;
    }
}

TEST(OfflineRendererTest, EndlessAndAbsurdFiguresAreLimitedWithANote) {
    for (auto const& [tail, latency] : {std::pair(-1, -3), std::pair(-5, -1), std::pair(2000000000, 2000000000)}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->tail = tail;
        filter->reportedLatency = latency;
        Rendered const rendered = Render(*filter, {.track = Plain(2), .samples = 10, .blockSize = 64});
        EXPECT_EQ(rendered.outcome.tail, 10000);
        EXPECT_EQ(rendered.outcome.lateness, 0);
        EXPECT_EQ(rendered.channels[0], Counting(10, 10000));
        EXPECT_EQ(rendered.channels[1].at(9), 20.0F);
        // One more tells of the channel that goes around.
        EXPECT_EQ(rendered.outcome.notes.size(), 3U);
    }
}

TEST(OfflineRendererTest, ChannelsGoThroughTheFilterOrAroundIt) {
    struct Case {
        int file, layout, inputs, outputs;
        std::vector<float> firstSamples; ///< the filter's are times 10
        char const* note;
    };
    for (Case const& one : {
             Case{1, 0, 1, 1, {10}, ""},
             Case{2, 0, 2, 2, {10, 20}, ""},
             Case{1, 0, 2, 2, {10, 10}, "mono file fed to both channels: the plug-in takes 2 channels"},
             Case{1, 0, 1, 2, {10, 10}, ""},
             Case{2, 0, 3, 3, {10, 20, 10}, "stereo file repeated over 3 channels: the plug-in takes 3 channels"},
             Case{2, 0, 1, 1, {10, 2}, "the plug-in takes one channel of the track: channel 1 goes around it"},
             Case{
                 4, 0, 1, 1, {10, 2, 3, 4}, "the plug-in takes one channel of the track: channels 1 to 3 go around it"},
             Case{2, 1, 1, 1, {15}, "stereo file mixed to mono: the track has one channel"},
             Case{6, 2, 2, 2, {30, 40}, "6-channel file mixed to 2 channels: the track has 2 channels"},
             Case{2, 0, 2, 1, {10, 0}, "channel 1 is silent: the plug-in takes it and gives nothing back"},
             Case{2,
                  0,
                  1,
                  2,
                  {10, 10},
                  "channel 1 of the file is not used: the plug-in gives that channel without taking it"},
             Case{2, 0, 0, 2, {1, 1}, "stereo file not used: the plug-in takes no audio"},
         }) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter(one.inputs, one.outputs));
        filter->gain = 10;
        TrackRequest track = Plain(one.file);
        track.layout = Plain(one.layout).file;
        Rendered const rendered = Render(*filter, {.track = track, .samples = 20, .blockSize = 8});
        std::vector<float> first;
        for (auto const& channel : rendered.channels)
            first.push_back(channel.at(0));
        EXPECT_EQ(first, one.firstSamples) << one.note;
        EXPECT_EQ(rendered.outcome.notes,
                  one.note[0] ? std::vector<std::string>{one.note} : std::vector<std::string>{});
    }
}

TEST(OfflineRendererTest, ChosenChannelsAreConnectedAndNoOthersAndWhatDoesNotFitIsWrongUsage) {
    struct Case {
        char const* choice;
        std::vector<float> firstSamples; ///< empty: does not fit
    };
    for (Case const& one :
         {Case{"in:1,0", {20, 10}}, Case{"in:0,0", {10, 10}}, Case{"in:-,1", {0, 20}}, Case{"out:1,0", {20, 10}},
          Case{"out:1", {0, 10}}, Case{"in:1,0/out:1,0", {10, 20}}, Case{"out:-,-/in:-", {1, 2}}, Case{"in:0,1,2", {}},
          Case{"in:3", {}}, Case{"out:2", {}}, Case{"out:0,1,-", {}}}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter(2, 2));
        filter->gain = 10;
        TrackRequest track = Plain(2);
        track.choice = ParseChannelChoice(one.choice);
        RenderSetup const setup{.track = track, .samples = 20, .blockSize = 8};
        if (one.firstSamples.empty()) {
            EXPECT_THROW(Render(*filter, setup), CommandError) << one.choice;
            continue;
        }
        Rendered const rendered = Render(*filter, setup);
        EXPECT_EQ((std::vector{rendered.channels[0].at(0), rendered.channels[1].at(0)}), one.firstSamples)
            << one.choice;
    }
}

TEST(OfflineRendererTest, SideChainReachesItsInputsHoweverWideTheTrackAndWhereverTheMainBusStands) {
    auto const sideBus = AudioBusDescription::CreateStereo(u"Side", AudioBusDescription::kTypeSideChain);
    for (int const file : {2, 3, 6}) {
        for (bool const mainFirst : {true, false}) {
            boost::intrusive_ptr<TestFilter> const filter(new TestFilter(mainFirst ? 2 : 0, 2));
            filter->AddInputBus(sideBus);
            if (!mainFirst)
                filter->AddInputBus({u"In", Plain(2).file, AudioBusDescription::kTypeMain});
            TrackRequest track = Plain(file);
            track.sideChain = sideBus.GetLayout();
            Render(*filter, {.track = track, .samples = 20, .blockSize = 8});
            float const side = static_cast<float>(file) + 1;
            EXPECT_EQ(filter->firstSamples, mainFirst ? (std::vector<float>{1, 2, side, side + 1})
                                                      : (std::vector<float>{side, side + 1, 1, 2}))
                << file;
        }
    }
}

TEST(OfflineRendererTest, ChannelsBeyondTheFlagsComeOutToo) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter(66, 66));
    filter->gain = 10;
    filter->silentOutputs.Set(3);
    Rendered const rendered = Render(*filter, {.track = Plain(70), .samples = 20, .blockSize = 8});
    for (std::size_t const channel : {0U, 64U, 65U, 66U, 69U})
        EXPECT_EQ(rendered.channels[channel].at(0), static_cast<float>(channel + 1) * (channel < 66 ? 10 : 1));
}

TEST(OfflineRendererTest, ChannelsAroundTheFilterAreInStepWithIt) {
    struct Case {
        std::optional<int> given;
        int resumed;
        std::optional<int> learned;
        int lateness;
    };
    for (Case const& one : {Case{{}, 30, {}, 0}, Case{{}, 0, 30, -30}, Case{30, 0, 30, 0}, Case{30, 7, {}, -23}}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->delay = 30;
        filter->reportedLatency = one.resumed;
        filter->learnedLatency = one.learned;
        Rendered const rendered =
            Render(*filter, {.track = Plain(2), .samples = 500, .blockSize = 10, .latency = one.given});
        EXPECT_EQ(rendered.channels[0], Counting(500));
        EXPECT_EQ(rendered.outcome.lateness, one.lateness);
        EXPECT_EQ(rendered.outcome.latencyAfterwards, one.learned.value_or(one.resumed));
        EXPECT_EQ(rendered.outcome.notes.size(), one.lateness == 0 ? 1U : 2U);
        EXPECT_EQ(rendered.channels[1].at(100), static_cast<float>(2 * (101 - one.lateness)));
    }
}

TEST(OfflineRendererTest, PreparationsAreDoneOnTheRunningFilterEachWithABlockOfSilenceBehind) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
    std::vector<std::string> seen;
    auto const see = [&](AudioFilter& prepared) {
        EXPECT_TRUE(filter->blocks.empty() || filter->firstSamples == std::vector<float>{0});
        seen.push_back(std::to_string(filter->blocks.size()) + (prepared.IsSuspended() ? " suspended" : " running"));
    };
    RenderSetup setup{.track = Plain(1), .samples = 20, .blockSize = 8};
    setup.prepared = see;
    EXPECT_EQ(Render(*filter, setup).channels[0], Counting(20));
    EXPECT_EQ(filter->blocks, (std::vector{8, 8, 4}));
    filter->blocks.clear();
    filter->firstSamples.clear();
    setup.preparations = {see, see};
    EXPECT_EQ(Render(*filter, setup).channels[0], Counting(20));
    EXPECT_EQ(filter->blocks, (std::vector{8, 8, 8, 8, 4}));
    EXPECT_EQ(seen, (std::vector<std::string>{"0 suspended", "0 running", "1 running", "2 suspended"}));
}

TEST(OfflineRendererTest, SideChainsGetFlaggedSilenceAndOnlyTheMainOutputComesOutFlaggedChannelsAsZeros) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter(2, 2));
    filter->AddInputBus(AudioBusDescription::CreateStereo(u"Side", AudioBusDescription::kTypeSideChain));
    filter->AddOutputBus(AudioBusDescription::CreateMono(u"More", AudioBusDescription::kTypeMain));
    filter->silentOutputs.Set(1);
    Rendered const rendered = Render(*filter, {.track = Plain(2), .samples = 20, .blockSize = 8});
    EXPECT_EQ(rendered.channels, (std::vector{Counting(20), std::vector<float>(20)}));
    for (std::uint64_t const flags : filter->flagsSeen)
        EXPECT_EQ(flags & 0xF, 0xCU);
}

TEST(OfflineRendererTest, BlocksThatAreNotProcessedAndAFilterWithoutOutputAreFailuresAndNoSilence) {
    boost::intrusive_ptr<TestFilter> const mute(new TestFilter(2, 0));
    EXPECT_THROW(Render(*mute, {.track = Plain(2), .samples = 20, .blockSize = 8}), std::runtime_error);
    EXPECT_EQ(mute->GetAudioFilterHost(), nullptr);
    for (int const blocksUntilFailure : {0, 2}) {
        for (int const fileChannels : {1, 2}) {
            boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
            filter->blocksUntilFailure = blocksUntilFailure;
            EXPECT_THROW(Render(*filter, {.track = Plain(fileChannels), .samples = 40, .blockSize = 8}),
                         std::runtime_error);
            EXPECT_TRUE(filter->IsSuspended());
        }
    }
}

TEST(RenderTransportTest, TransportPlaysInStepWithThePositionAndFollowsTheSongFromTheSamplesOfItsTemposAndMeters) {
    MidiSong song;
    song.tempos = {{0.0, 0.0, 120.0}, {2.0004, 4.0008, 60.0}};
    song.meters = {{2.0004, 4.0008, 3, 8}, {4.0004, 6.0008, 7, 4}};
    RenderTransport transport(1000.0, &song);
    struct Case {
        std::int64_t sample;
        double tempo, quarters, bar;
        int numerator, denominator, steady;
    };
    for (Case const& one : {Case{0, 120, 0, 0, 4, 4, 2000}, Case{1999, 120, 3.998, 0, 4, 4, 1},
                            Case{2000, 60, 4.0008, 4.0008, 3, 8, 2000}, Case{3900, 60, 5.9004, 5.5008, 3, 8, 100},
                            Case{4000, 60, 6.0008, 6.0008, 7, 4, 5000}}) {
        transport.SetPosition(one.sample);
        vynaudiofilterhost::PlaybackState state;
        ASSERT_TRUE(transport.GetPlaybackState(state));
        EXPECT_EQ(state.mTempo, one.tempo) << one.sample;
        EXPECT_NEAR(state.mMusicalPosition, one.quarters, 1e-9) << one.sample;
        EXPECT_NEAR(state.mBarStartPosition, one.bar, 1e-9) << one.sample;
        EXPECT_EQ(state.mTimeSignatureNumerator, one.numerator);
        EXPECT_EQ(state.mTimeSignatureDenominator, one.denominator);
        EXPECT_EQ(transport.CountSteadySamples(one.sample, 5000), one.steady);
    }
    RenderTransport plain(1000.0);
    plain.SetPosition(5250);
    vynaudiofilterhost::PlaybackState state;
    ASSERT_TRUE(plain.GetPlaybackState(state));
    EXPECT_TRUE(state.mIsPlaying);
    EXPECT_EQ(state.mSamplePosition, 5250);
    EXPECT_DOUBLE_EQ(state.mMusicalPosition, 10.5);
    EXPECT_DOUBLE_EQ(state.mBarStartPosition, 8.0);
}

} // namespace
