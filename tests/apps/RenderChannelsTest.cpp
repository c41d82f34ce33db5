#include "apps/VynhostFixture.h"
#include "vynhost/TrackLayout.h"

#include <algorithm>
#include <cmath>
#include <string_view>

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;

namespace {

std::vector<float> GetChannel(AudioClip const& clip, std::size_t channel, float gain = 1) {
    std::vector<float> samples;
    for (std::size_t frame = 0; frame < clip.FrameCount(); ++frame)
        samples.push_back(gain * clip.At(frame, channel));
    return samples;
}

// A mono effect of half the gain.
FixtureConfiguration MakeMonoEffect(unsigned latency) {
    FixtureConfiguration configuration;
    configuration.busAnswer = FixtureBusAnswer::MonoOnly;
    configuration.AddParameter(1, u"More");
    configuration.special[configuration.specialCount++] = {.index = 0, .id = 0, .defaultValue = 0.25};
    configuration.latency = latency;
    configuration.delayAudio = true;
    return configuration;
}

TEST_F(RenderCommandTest, ChannelAroundMonoPluginComesOutAsItWasAndInTime) {
    AudioClip const in = ReadClip(mInput);
    for (unsigned const latency : {0U, 1U, 64U, 5000U}) {
        for (int const blockSize : {64, 512}) {
            vynhost::RenderRequest request = MakeRequest();
            request.blockSize = blockSize;
            json const document = RenderConfigured(MakeMonoEffect(latency), request);
            AudioClip const out = ReadClip(mOutput);
            EXPECT_EQ(GetChannel(out, 0), GetChannel(in, 0, 0.5F)) << latency;
            EXPECT_EQ(GetChannel(out, 1), GetChannel(in, 1)) << latency;
            EXPECT_EQ(document.at("channelsOut"), 2);
            EXPECT_EQ(document.at("notes").size(), 1U) << document;
        }
    }
}

// A latency that every new plug-in has forgotten makes the rendering start with a block of silence.
TEST_F(RenderCommandTest, LatencyThatShowsWhileThePluginWorksIsCompensatedBySecondRendering) {
    static FixtureExports const* exports;
    exports = mFixture.operator->();
    for (bool const forgets : {false, true}) {
        static bool forgetting;
        forgetting = forgets;
        json const document = RenderConfigured(MakeMonoEffect(0), MakeRequest(), [](FixtureCall const* call) {
            if (call->name == std::string_view("setProcessing"))
                exports->setLatency(300);
            if (forgetting && call->name == std::string_view("initialize"))
                exports->setLatency(0);
        });
        EXPECT_EQ(document.at("latency"), 300);
        EXPECT_EQ(document.at("notes").size(), 2U) << document;
        AudioClip const out = ReadClip(mOutput);
        EXPECT_EQ(GetChannel(out, 0), GetChannel(ReadClip(mInput), 0, 0.5F));
        EXPECT_EQ(GetChannel(out, 1), GetChannel(ReadClip(mInput), 1));
    }
}

TEST_F(RenderCommandTest, AskedLayoutIsTheTracksAndWhatThePluginIsAskedFor) {
    AudioClip const in = ReadClip(mInput);
    for (auto const& [name, channels, arrangement] : {std::tuple("mono", 1, 0x80000U), std::tuple("stereo", 2, 3U),
                                                      std::tuple("5.1", 6, 0x3FU), std::tuple("7.1", 8, 0xFFU)}) {
        vynhost::RenderRequest request = MakeRequest();
        request.layout = vynhost::LayoutOfName(name);
        json const document = RenderConfigured({}, request);
        EXPECT_EQ(mFixture.Snapshot().requestedInputs[0], arrangement);
        AudioClip const out = ReadClip(mOutput);
        ASSERT_EQ(out.channels, channels);
        for (std::size_t const frame : {0U, 1000U, 47999U}) {
            if (channels == 1)
                EXPECT_FLOAT_EQ(out.At(frame, 0), (in.At(frame, 0) + in.At(frame, 1)) / 2);
            else
                EXPECT_EQ(out.At(frame, 1), in.At(frame, 1));
        }
    }
}

TEST_F(RenderCommandTest, FileWithoutUsualLayoutKeepsItsChannels) {
    for (int const channels : {3, 5, 7, 12}) {
        AudioClip clip = MakeNoise(channels, 1000);
        clip.format = SF_FORMAT_WAVEX | SF_FORMAT_FLOAT;
        WriteClip(mInput, clip);
        FixtureConfiguration configuration;
        configuration.busAnswer = FixtureBusAnswer::StereoOnly;
        json const document = RenderConfigured(configuration);
        EXPECT_EQ(document.at("channelsOut"), channels);
        EXPECT_EQ(ReadClip(mOutput).samples, clip.samples);
    }
}

// The fixture's second output gives what its second input takes.
TEST_F(RenderCommandTest, SideChainFileReachesThePluginWithSilenceBehindItsEnd) {
    std::filesystem::path const side = mFolder.Path() / "side.wav";
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(3), FixtureBus::Make(3, u"Side", 1)},
                           {FixtureBus::Make(3), FixtureBus::Make(3)});
    vynhost::RenderRequest request = MakeRequest();
    request.sideChainPath = side;
    request.channels = vynhost::ParseChannelChoice("out:-,-,0,1");
    for (std::size_t const frames : {1000U, 48000U, 50000U}) {
        AudioClip const clip =
            MakeClip(2, frames, [](std::size_t i, std::size_t c) { return static_cast<float>(i % 100 + c) / 128.0F; });
        WriteClip(side, clip);
        json const document = RenderConfigured(configuration, request);
        std::vector<float> expected = clip.samples;
        expected.resize(2 * 48000);
        EXPECT_EQ(ReadClip(mOutput).samples, expected);
        EXPECT_EQ(document.at("notes").size(), frames == 48000 ? 0U : 1U) << document;
    }
    WriteClip(side, MakeNoise(3, 48000));
    EXPECT_EQ(RenderConfigured(configuration, request).at("notes").at(0),
              "1 of 3 channels of the side chain not used: the plug-in is not connected with it");
}

TEST_F(VynhostTest, RealPluginTakesAsMuchOfTheSideChainAsItHasInputsFor) {
    if (!std::filesystem::exists(kRealPlugins / "ZamCompX2.vst3"))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    json const document = Render(kRealPlugins / "ZamCompX2.vst3", {"--sidechain", mInput});
    EXPECT_EQ(document.at("channelsOut"), 2);
    EXPECT_EQ(document.at("notes"), json{"1 of 2 channels of the side chain not used: the plug-in is not connected "
                                         "with it"});
}

TEST_F(VynhostTest, RealPluginWithLatencyStaysInStepWithTheChannelsAroundIt) {
    if (!std::filesystem::exists(kRealPlugins / "ZaMaximX2.vst3"))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    for (int const channels : {4, 6}) {
        // A limiter: a single loud sample comes out loudest where it went in.
        AudioClip clip = MakeClip(channels, 9600, [](std::size_t i, std::size_t) { return i == 4000 ? 3.0F : 0.0F; });
        clip.format = SF_FORMAT_WAVEX | SF_FORMAT_FLOAT;
        WriteClip(mInput, clip);
        json const document = Render(kRealPlugins / "ZaMaximX2.vst3");
        EXPECT_EQ(document.at("latency"), 480);
        AudioClip const out = ReadClip(mOutput);
        ASSERT_EQ(out.channels, channels);
        for (std::size_t channel = 0; channel < static_cast<std::size_t>(channels); ++channel) {
            std::vector<float> const samples = GetChannel(out, channel);
            auto const loudest = std::ranges::max_element(samples, {}, [](float s) { return std::abs(s); });
            EXPECT_EQ(loudest - samples.begin(), 4000) << channel;
            EXPECT_EQ(GetChannel(clip, channel) == samples, channel >= 2) << channel;
        }
    }
}

} // namespace
