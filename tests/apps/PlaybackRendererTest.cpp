#include "vynhost/PlaybackRenderer.h"
#include "apps/AudioFiles.h"
#include "apps/MidiFiles.h"
#include "fakes/PlayedFilter.h"
#include "guard/OutputGuard.h"
#include "support/NoAllocationScope.h"
#include "support/TemporaryFolder.h"
#include "vynhost/CommandError.h"
#include "vynhost/PlaybackSource.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

using namespace vyntest;
using namespace vynhost;
using testing::Each;

namespace {

class PlaybackRendererTest : public testing::Test {
protected:
    static constexpr int kRate = 44100;

    PlaybackSource MakeSource(AudioClip clip, int sampleRate = kRate) const {
        clip.sampleRate = sampleRate;
        std::filesystem::path const path = mFolder.Path() / "in.wav";
        WriteClip(path, clip);
        PlaybackSource source(path);
        source.Prepare(kRate);
        return source;
    }

    PlaybackSource MakeSong(std::initializer_list<int> track) const {
        // 120 quarter notes a minute of 100 ticks: a tick is 5 milliseconds.
        PlaybackSource source(WriteMidi(mFolder.Path() / "song.mid", MidiFileText(100, {MidiTrack(track)})));
        source.Prepare(kRate);
        return source;
    }

    // channels[channel][sample]
    static std::vector<std::vector<float>> Render(PlaybackRenderer& renderer, std::vector<int> const& blocks) {
        std::vector<std::vector<float>> channels(static_cast<std::size_t>(renderer.GetChannels()));
        for (int const block : blocks) {
            std::vector<float*> pointers;
            for (std::vector<float>& channel : channels) {
                channel.resize(channel.size() + static_cast<std::size_t>(block), 9.0F);
                pointers.push_back(channel.data() + channel.size() - block);
            }
            NoAllocationScope const guard;
            renderer.Render(pointers.data(), block);
        }
        return channels;
    }

    TemporaryFolder mFolder;
    boost::intrusive_ptr<PlayedFilter> mFilter{new PlayedFilter(2, 2)};
};

TEST_F(PlaybackRendererTest, FileTurnsWithoutAGapAndTheTransportWithItAndAShortOneFillsASecond) {
    AudioClip const clip = MakeNoise(2, 50000);
    PlaybackSource source = MakeSource(clip);
    mFilter->gain = 0.5F;
    PlaybackRenderer renderer(*mFilter, source, 512);
    auto const channels = Render(renderer, std::vector<int>(250, 511));
    for (std::size_t i = 0; i < channels[0].size(); ++i) {
        ASSERT_EQ(channels[0][i], 0.5F * clip.At(i % 50000, 0)) << i;
        ASSERT_EQ(channels[1][i], 0.5F * clip.At(i % 50000, 1)) << i;
    }
    EXPECT_EQ(renderer.GetPosition(), 250 * 511 % 50000);
    EXPECT_EQ(mFilter->transport, 249 * 511 % 50000);
    EXPECT_LE(mFilter->longestBlock, 512);
    AudioClip const little = MakeNoise(1, 7);
    PlaybackSource repeated = MakeSource(little);
    ASSERT_EQ(repeated.GetLength(), kRate);
    for (int i = 0; i < kRate; ++i)
        ASSERT_EQ(repeated.GetAudio()->GetSamples(0, 0)[i], little.At(static_cast<std::size_t>(i % 7), 0)) << i;
}

TEST_F(PlaybackRendererTest, StartsWhereItIsToldWithinTheSourceAndLeavesTheFilterSuspended) {
    AudioClip const clip = MakeNoise(2, 50000);
    PlaybackSource source = MakeSource(clip);
    {
        PlaybackRenderer renderer(*mFilter, source, 512, 50000 + 1234);
        EXPECT_EQ(Render(renderer, {512})[0][0], clip.At(1234, 0));
        EXPECT_FALSE(mFilter->IsSuspended());
        EXPECT_TRUE(renderer.IsCurrent());
    }
    EXPECT_TRUE(mFilter->IsSuspended());
    EXPECT_EQ(mFilter->GetAudioFilterHost(), nullptr);
}

TEST_F(PlaybackRendererTest, GuardSilencesTheBlockInAllChannels) {
    PlaybackSource source = MakeSource(MakeNoise(2, kRate));
    vynguard::OutputGuard guard;
    PlaybackRenderer renderer(*mFilter, source, 512, 0, &guard);
    mFilter->spoiledSample = 511;
    EXPECT_THAT(Render(renderer, {512}), Each(Each(0.0F)));
    mFilter->spoiledSample = -1;
    EXPECT_NE(Render(renderer, {512})[0][0], 0.0F);
    EXPECT_EQ(guard.GetReport().silenced, 1);
}

TEST_F(PlaybackRendererTest, FilterThatThrowsIsSilentAndGoesOn) {
    AudioClip const clip = MakeNoise(2, kRate);
    PlaybackSource source = MakeSource(clip);
    PlaybackRenderer renderer(*mFilter, source, 512);
    mFilter->throwsAtProcess = true;
    std::vector<float> left(512, 9.0F), right(512, 9.0F);
    float* const channels[]{left.data(), right.data()};
    renderer.Render(channels, 512);
    EXPECT_THAT(left, Each(0.0F));
    mFilter->throwsAtProcess = false;
    EXPECT_EQ(Render(renderer, {512})[0][0], clip.At(512, 0));
}

TEST_F(PlaybackRendererTest, SongTurnsWithAllItsNotesReleased) {
    // A note that is held to the end, at 200 ticks: 44100 samples.
    mFilter = new PlayedFilter(0, 2);
    PlaybackSource source = MakeSong({0, 0x90, 60, 100, 100, 0x90, 62, 100, 100, 0x90, 64, 100});
    EXPECT_EQ(source.GetLength(), kRate + 1);
    PlaybackRenderer renderer(*mFilter, source, 512);
    Render(renderer, std::vector<int>(200, 512));
    std::vector<PlayedFilter::Event> expected;
    for (std::int64_t turn = 0; turn * (kRate + 1) < 200 * 512; ++turn) {
        std::int64_t const start = turn * (kRate + 1);
        expected.insert(expected.end(), {{start, 0x90, 60}, {start + 22050, 0x90, 62}, {start + kRate, 0x90, 64}});
        for (int const key : {60, 62, 64})
            expected.push_back({start + kRate, 0x80, static_cast<unsigned char>(key)});
    }
    std::erase_if(expected, [](auto const& event) { return event.sample >= 200 * 512; });
    EXPECT_EQ(std::vector(mFilter->events.begin(), mFilter->events.begin() + static_cast<long>(mFilter->eventCount)),
              expected);
}

TEST_F(PlaybackRendererTest, CrowdAtTheEndOfASongIsSentInFull) {
    mFilter = new PlayedFilter(0, 2);
    std::string track;
    for (int note = 0; note < 700; ++note)
        track += MidiText({note == 0 ? 100 : 0, 0x90, note % 128, 100});
    track = MidiChunk("MTrk", track + MidiText({0, 0xFF, 0x2F, 0}));
    PlaybackSource source(WriteMidi(mFolder.Path() / "song.mid", MidiFileText(50, {track})));
    source.Prepare(kRate);
    PlaybackRenderer renderer(*mFilter, source, 512);
    Render(renderer, std::vector<int>(kRate / 512 + 2, 512));
    EXPECT_EQ(mFilter->eventCount, 1400U);
}

TEST_F(PlaybackRendererTest, FileOfAnotherRateKeepsItsPitchLengthAndPlace) {
    for (int const rate : {22050, 48000, 96000}) {
        AudioClip const clip = MakeClip(1, static_cast<std::size_t>(2 * rate), [rate](std::size_t i, std::size_t) {
            return static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * 1000.0 * static_cast<double>(i) / rate));
        });
        PlaybackSource source = MakeSource(clip, rate);
        ASSERT_EQ(source.GetLength(), 2 * kRate);
        float const* const samples = source.GetAudio()->GetSamples(0, 0);
        for (int i = 1000; i < 2 * kRate - 1000; ++i)
            ASSERT_NEAR(samples[i], 0.5 * std::sin(2 * std::numbers::pi * 1000.0 * i / kRate), 1e-3)
                << rate << " " << i;
    }
}

TEST_F(PlaybackRendererTest, FileSamplesThatAreNoNumberBecomeSilence) {
    AudioClip const clip = MakeClip(1, 48000, [](std::size_t i, std::size_t) {
        return i == 100 ? NAN : i == 200 ? INFINITY : 0.25F;
    });
    for (int const rate : {kRate, 48000}) {
        PlaybackSource source = MakeSource(clip, rate);
        float const* const samples = source.GetAudio()->GetSamples(0, 0);
        EXPECT_TRUE(std::all_of(samples, samples + source.GetLength(), [](float s) { return std::abs(s) < 1.0F; }));
    }
}

TEST_F(PlaybackRendererTest, FileThatWouldFillTheMemoryIsRefusedBeforeItIsRead) {
    AudioClip clip = MakeClip(1, 1200000, [](std::size_t, std::size_t) { return 0.0F; });
    clip.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    EXPECT_THROW(MakeSource(clip, 200), CommandError);
    EXPECT_THROW(MakeSource(MakeNoise(1, 100), 100), CommandError);
    EXPECT_THROW(PlaybackSource(WriteMidi(mFolder.Path() / "x.mid", MidiFileText(100, {MidiTrack({})}))), CommandError);
}

} // namespace
