#include "vynhost/DoctorRenderStep.h"

#include "guard/OutputGuard.h"
#include "vynhost/DoctorReport.h"
#include "vynhost/MidiSong.h"
#include "vynhost/OfflineRenderer.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <string>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

constexpr double kSampleRate = 48000.0;
constexpr std::int64_t kSamples = 24000;
constexpr int kChannels = 2;

/// A sine under noise, in both channels alike.
class TestSound {
public:
    void Read(float* const* channels, int samples) {
        for (int sample = 0; sample < samples; ++sample) {
            double const sine =
                std::sin(2.0 * std::numbers::pi * 440.0 * static_cast<double>(mPosition++) / kSampleRate);
            mNoise = mNoise * 1664525U + 1013904223U;
            float const value =
                static_cast<float>(0.25 * sine) + 0.1f * (static_cast<float>(mNoise >> 8) / 8388608.0f - 1.0f);
            for (int channel = 0; channel < kChannels; ++channel)
                channels[channel][sample] = value;
        }
    }

private:
    std::int64_t mPosition = 0;
    std::uint32_t mNoise = 1;
};

/// Counts the blocks that nobody should hear.
class SoundCheck {
public:
    void Take(float* const* channels, int channelCount, int samples) {
        bool isNaN = false;
        bool isInfinite = false;
        bool isLoud = false;
        for (int channel = 0; channel < channelCount; ++channel) {
            for (float const value : std::span(channels[channel], static_cast<std::size_t>(samples))) {
                isNaN = isNaN || std::isnan(value);
                isInfinite = isInfinite || std::isinf(value);
                isLoud = isLoud || (std::isfinite(value) && std::abs(value) > vynguard::OutputGuard::kLoudest);
            }
        }
        ++mBlocks;
        mNaN += isNaN;
        mInfinite += isInfinite;
        mLoud += isLoud;
    }

    void Tell(int blockSize, DoctorStep& step) const {
        auto const tell = [&](int count, char const* what) {
            if (count > 0)
                step.Misbehave(std::string("gives ") + what + " in " + std::to_string(count) + " of " +
                               std::to_string(mBlocks) + " blocks of " + std::to_string(blockSize) + " samples");
        };
        tell(mNaN, "what is no number");
        tell(mInfinite, "infinite values");
        tell(mLoud, "more than +60 dBFS");
    }

private:
    int mBlocks = 0;
    int mNaN = 0;
    int mInfinite = 0;
    int mLoud = 0;
};

MidiSong MakeNotes() {
    MidiSong song;
    for (std::uint8_t const note : {std::uint8_t{48}, std::uint8_t{60}, std::uint8_t{67}})
        song.messages.push_back({.seconds = 0.05, .status = 0x90, .data1 = note, .data2 = 100});
    for (std::uint8_t const note : {std::uint8_t{48}, std::uint8_t{60}, std::uint8_t{67}})
        song.messages.push_back({.seconds = 0.3, .status = 0x80, .data1 = note, .data2 = 0});
    song.seconds = static_cast<double>(kSamples) / kSampleRate;
    return song;
}

// Told once, and not for each size of blocks.
void CompareLatencies(int before, int after, bool isTold, DoctorStep& step) {
    std::string const text = "tells a latency of " + std::to_string(before) + " samples, and " + std::to_string(after) +
                             " when it has worked" + (isTold ? "" : ", without a word of the change");
    if (before == after || std::ranges::find(step.remarks, text) != step.remarks.end())
        return;
    isTold ? step.Note(text) : step.Misbehave(text);
}

double Render(AudioFilter& filter, int blockSize, DoctorStep& step) {
    MidiSong const song = filter.IsMusicDevice() ? MakeNotes() : MidiSong{};
    bool isTold = false;
    boost::signals2::scoped_connection const connection(filter.ConnectLatencyChanged([&] { isTold = true; }));
    int latency = 0;
    RenderSetup setup{.track = {.file = UsualLayout(kChannels)},
                      .samples = kSamples,
                      .sampleRate = kSampleRate,
                      .blockSize = blockSize};
    setup.tail = 0;
    // Some know their latency suspended or running alone.
    setup.prepared = [&](AudioFilter& prepared) { latency = prepared.GetInitialDelay(); };
    if (!song.messages.empty())
        setup.song = &song;
    OfflineRenderer renderer(filter, std::move(setup));
    latency = std::max(latency, filter.GetInitialDelay());
    TestSound sound;
    SoundCheck check;
    RenderOutcome const outcome = renderer.Run(
        [&](float* const* channels, int samples) { sound.Read(channels, samples); },
        [&](float* const* channels, int samples) { check.Take(channels, renderer.GetOutputChannels(), samples); });
    check.Tell(blockSize, step);
    CompareLatencies(latency, outcome.latencyAfterwards, isTold, step);
    return outcome.timesRealTime;
}

} // namespace

double ExamineRendering(PluginSelection const& plugin, DoctorStep& step) {
    constexpr int kLargeBlock = 512;
    constexpr int kSmallBlock = 16;
    auto filter = plugin.CreateFilter();
    if (filter->GetOutputBuses().empty()) {
        step.Skip("gives no audio");
        return 0.0;
    }
    double const timesRealTime = Render(*filter, kLargeBlock, step);
    filter.reset();
    Render(*plugin.CreateFilter(), kSmallBlock, step);
    return timesRealTime;
}

} // namespace vynhost
