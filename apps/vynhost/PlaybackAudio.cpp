#include "vynhost/PlaybackAudio.h"

#include "vynhost/AudioFileReader.h"
#include "vynhost/ChannelBuffers.h"
#include "vynhost/CommandError.h"
#include "vynhost/PlaybackResampler.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>

namespace vynhost {

namespace {

constexpr double kMostMebibytes = 768.0;
constexpr int kStretch = 1 << 15;

// Checked before memory is asked for: what a file's header promises may be anything.
void CheckSize(std::string const& path, double samplesPerChannel, int channels) {
    double const mebibytes = samplesPerChannel * channels * sizeof(float) / (1 << 20);
    if (mebibytes > kMostMebibytes)
        throw CommandError::OfFile(path, "is too long to be played: it would take " +
                                             std::to_string(std::llround(mebibytes)) + " MiB of memory, and " +
                                             std::to_string(std::llround(kMostMebibytes)) + " are the most");
}

void ReadStretches(AudioFileReader& reader, std::function<void(float* const* channels, int samples)> const& take) {
    ChannelBuffers stretch(reader.GetFormat().channels, kStretch);
    for (std::int64_t left = reader.GetSampleCount(); left > 0;) {
        int const samples = static_cast<int>(std::min<std::int64_t>(left, kStretch));
        reader.Read(stretch.GetPointers(), samples);
        for (int channel = 0; channel < stretch.GetChannelCount(); ++channel)
            std::ranges::replace_if(
                stretch.GetChannel(channel, samples), [](float sample) { return !std::isfinite(sample); }, 0.0f);
        take(stretch.GetPointers(), samples);
        left -= samples;
    }
}

} // namespace

PlaybackAudio::PlaybackAudio(std::string const& path, int sampleRate) {
    AudioFileReader reader(path);
    mFormat = reader.GetFormat();
    double const ratio = static_cast<double>(sampleRate) / mFormat.sampleRate;
    if (!PlaybackResampler::CanConvert(ratio))
        throw CommandError::OfFile(path, "has a sample rate of " + std::to_string(mFormat.sampleRate) +
                                             " Hz, which can't be converted to " + std::to_string(sampleRate) + " Hz");
    double const samples = std::max(ratio * static_cast<double>(reader.GetSampleCount()), 1.0 * sampleRate);
    CheckSize(path, samples, mFormat.channels);
    mChannels.resize(static_cast<std::size_t>(mFormat.channels));
    if (mFormat.sampleRate == sampleRate)
        Read(reader);
    else
        ReadConverted(reader, ratio);
    FillSecond(sampleRate);
}

void PlaybackAudio::Read(AudioFileReader& reader) {
    for (std::vector<float>& channel : mChannels)
        channel.reserve(static_cast<std::size_t>(reader.GetSampleCount()));
    ReadStretches(reader, [this](float* const* channels, int samples) {
        for (std::vector<float>& channel : mChannels) {
            channel.insert(channel.end(), *channels, *channels + samples);
            ++channels;
        }
    });
}

void PlaybackAudio::ReadConverted(AudioFileReader& reader, double ratio) {
    auto const length = std::llround(ratio * static_cast<double>(reader.GetSampleCount()));
    std::vector<PlaybackResampler> resamplers;
    for (std::vector<float>& channel : mChannels)
        resamplers.emplace_back(ratio, static_cast<std::size_t>(std::max(length, 1LL)), channel);
    ReadStretches(reader, [&resamplers](float* const* channels, int samples) {
        for (PlaybackResampler& resampler : resamplers)
            resampler.Add({*channels++, static_cast<std::size_t>(samples)});
    });
    for (PlaybackResampler& resampler : resamplers)
        resampler.Finish();
}

void PlaybackAudio::FillSecond(int sampleRate) {
    auto const second = static_cast<std::size_t>(sampleRate);
    for (std::vector<float>& channel : mChannels) {
        std::size_t const length = channel.size();
        std::size_t const times = (second + length - 1) / length;
        channel.reserve(length * times);
        for (std::size_t time = 1; time < times; ++time)
            std::copy_n(channel.begin(), length, std::back_inserter(channel));
    }
}

} // namespace vynhost
