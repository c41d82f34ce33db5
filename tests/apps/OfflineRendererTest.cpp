#include "vynhost/OfflineRenderer.h"

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

// A filter that delays, and that can be told to misbehave.
class TestFilter : public AudioFilter {
public:
    explicit TestFilter(int inputs = 1, int outputs = 1) : AudioFilter(u"test", u"Test") {
        AddInputBus({u"In", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(inputs)), {}});
        AddOutputBus({u"Out", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(outputs)), {}});
    }

    void Process(float** in, float** out, int numSamples, ChannelFlags inFlags, ChannelFlags& outFlags) override {
        flagsSeen.push_back(inFlags.GetBits());
        blocks.push_back(numSamples);
        if (learnedLatency)
            reportedLatency = *learnedLatency;
        outFlags = silentOutputs;
        if (static_cast<int>(blocks.size()) > blocksUntilFailure)
            return;
        for (int channel = 0; channel < GetNumberOfOutputChannels(); ++channel) {
            std::deque<float>& line = mLines[channel];
            line.resize(std::max(line.size(), static_cast<std::size_t>(delay)));
            for (int i = 0; i < numSamples; ++i) {
                line.push_back(in[channel % GetNumberOfInputChannels()][i]);
                out[channel][i] = line.front();
                line.pop_front();
            }
        }
    }
    int GetMaxProcessingBlockSize() const override { return maxBlock; }
    int GetInitialDelay() const override { return reportedLatency; }
    int GetTail() const override { return tail; }
    using AudioFilter::AddInputBus;
    using AudioFilter::AddOutputBus;

    int delay = 0, reportedLatency = 0, tail = 0, maxBlock = 1024, blocksUntilFailure = 1 << 30;
    std::optional<int> learnedLatency;
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

// Sends 1, 2, 3, … through the filter; channel c of the source is that times (c + 1).
Rendered Render(AudioFilter& filter, RenderSetup setup) {
    setup.sampleRate = 1000.0;
    OfflineRenderer renderer(filter, setup);
    Rendered rendered;
    rendered.channels.resize(static_cast<std::size_t>(renderer.GetOutputChannels()));
    int next = 1;
    auto const source = [&](float* const* channels, int samples) {
        for (int i = 0; i < samples; ++i, ++next)
            for (int channel = 0; channel < setup.channels; ++channel)
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
        Rendered const rendered = Render(*filter, {.channels = 1, .samples = 3000, .blockSize = blockSize});
        EXPECT_EQ(rendered.channels[0], Counting(3000, 5)) << blockSize;
        EXPECT_EQ(rendered.outcome.latency, 100);
        EXPECT_EQ(rendered.outcome.samples, 3005);
        // The filter's silence flags hold for all of a block only when it doesn't cut the block up.
        EXPECT_LE(*std::ranges::max_element(filter->blocks), std::min(blockSize, 1024));
        EXPECT_TRUE(filter->IsSuspended());
    }
}

TEST(OfflineRendererTest, LatencyThatShowsWithTheFirstBlockIsCompensated) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
    filter->delay = 30;
    filter->learnedLatency = 30;
    EXPECT_EQ(Render(*filter, {.channels = 1, .samples = 500, .blockSize = 10}).channels[0], Counting(500));
}

TEST(OfflineRendererTest, GivenLatencyWinsOverTheReportedOne) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
    filter->delay = 30;
    filter->reportedLatency = 7;
    Rendered const rendered = Render(*filter, {.channels = 1, .samples = 500, .blockSize = 10, .latency = 30});
    EXPECT_EQ(rendered.channels[0], Counting(500));
    EXPECT_EQ(rendered.outcome.latencyAfterwards, 7);
}

TEST(OfflineRendererTest, EndlessAndAbsurdFiguresAreLimitedWithANote) {
    for (int const tail : {-1, -5, 2000000000}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->tail = tail;
        filter->reportedLatency = -3;
        Rendered const rendered = Render(*filter, {.channels = 1, .samples = 10, .blockSize = 64});
        EXPECT_EQ(rendered.outcome.tail, 10000);
        EXPECT_EQ(rendered.channels[0], Counting(10, 10000));
        EXPECT_EQ(rendered.outcome.notes.size(), 2U);
    }
}

TEST(OfflineRendererTest, ChannelsAreFittedToWhatTheFilterTakes) {
    struct Case {
        int file, plugin;
        std::vector<float> firstSamples;
        char const* note;
    };
    for (Case const& one :
         {Case{1, 1, {1}, ""}, Case{2, 2, {1, 2}, ""},
          Case{1, 2, {1, 1}, "mono file fed to both channels: the plug-in takes 2 channels"},
          Case{2, 1, {1.5}, "stereo file mixed to mono: the plug-in takes one channel"},
          Case{6, 2, {3, 4}, "6-channel file mixed to 2 channels: the plug-in takes 2 channels"},
          Case{2, 3, {1, 2, 1}, "stereo file repeated over 3 channels: the plug-in takes 3 channels"}}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter(one.plugin, one.plugin));
        Rendered const rendered = Render(*filter, {.channels = one.file, .samples = 20, .blockSize = 8});
        std::vector<float> first;
        for (auto const& channel : rendered.channels)
            first.push_back(channel.at(0));
        EXPECT_EQ(first, one.firstSamples);
        EXPECT_EQ(rendered.outcome.notes,
                  one.note[0] ? std::vector<std::string>{one.note} : std::vector<std::string>{});
    }
}

TEST(OfflineRendererTest, SideChainsGetFlaggedSilenceAndOnlyTheMainOutputComesOut) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter(2, 2));
    filter->AddInputBus(AudioBusDescription::CreateStereo(u"Side", AudioBusDescription::kTypeSideChain));
    filter->AddOutputBus(AudioBusDescription::CreateMono(u"More", AudioBusDescription::kTypeMain));
    Rendered const rendered = Render(*filter, {.channels = 2, .samples = 20, .blockSize = 8});
    EXPECT_EQ(rendered.channels.size(), 2U);
    for (std::uint64_t const flags : filter->flagsSeen)
        EXPECT_EQ(flags & 0xF, 0xCU);
}

TEST(OfflineRendererTest, ChannelsFlaggedSilentAreWrittenAsZeros) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter(2, 2));
    filter->silentOutputs.Set(1);
    Rendered const rendered = Render(*filter, {.channels = 2, .samples = 20, .blockSize = 8});
    EXPECT_EQ(rendered.channels[0], Counting(20));
    EXPECT_EQ(rendered.channels[1], std::vector<float>(20));
}

TEST(OfflineRendererTest, BlocksThatAreNotProcessedAreAFailureAndNoSilence) {
    for (int const blocksUntilFailure : {0, 2}) {
        boost::intrusive_ptr<TestFilter> const filter(new TestFilter);
        filter->blocksUntilFailure = blocksUntilFailure;
        EXPECT_THROW(Render(*filter, {.channels = 1, .samples = 40, .blockSize = 8}), std::runtime_error);
        EXPECT_TRUE(filter->IsSuspended());
    }
}

TEST(OfflineRendererTest, FilterWithoutOutputIsRefused) {
    boost::intrusive_ptr<TestFilter> const filter(new TestFilter(2, 0));
    EXPECT_THROW(OfflineRenderer(*filter, {.channels = 2, .samples = 20, .sampleRate = 1000.0, .blockSize = 8}),
                 std::runtime_error);
    EXPECT_EQ(filter->GetAudioFilterHost(), nullptr);
}

TEST(RenderTransportTest, TransportPlaysInStepWithThePosition) {
    RenderTransport transport(1000.0);
    transport.SetPosition(5250);
    vynaudiofilterhost::PlaybackState state;
    ASSERT_TRUE(transport.GetPlaybackState(state));
    EXPECT_TRUE(state.mIsPlaying);
    EXPECT_EQ(state.mSamplePosition, 5250);
    EXPECT_DOUBLE_EQ(state.mMusicalPosition, 10.5);
    EXPECT_DOUBLE_EQ(state.mBarStartPosition, 8.0);
}

} // namespace
