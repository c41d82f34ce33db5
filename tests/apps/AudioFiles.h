#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <sndfile.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace vyntest {

/// The whole of an audio file: samples[frame * channels + channel].
struct AudioClip {
    int channels = 1;
    int sampleRate = 48000;
    int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    std::vector<float> samples = {};

    std::size_t FrameCount() const { return samples.size() / static_cast<std::size_t>(channels); }
    float At(std::size_t frame, std::size_t channel) const {
        return samples[frame * static_cast<std::size_t>(channels) + channel];
    }
};

/// A clip whose samples are given by a function of frame and channel.
inline AudioClip MakeClip(int channels, std::size_t frames,
                          std::function<float(std::size_t, std::size_t)> const& wave) {
    AudioClip clip{.channels = channels};
    for (std::size_t i = 0; i < frames * static_cast<std::size_t>(channels); ++i)
        clip.samples.push_back(wave(i / static_cast<std::size_t>(channels), i % static_cast<std::size_t>(channels)));
    return clip;
}

/// A sound without a period, of the same samples every time, within -0.5..0.5 and in steps that 16 bits can hold.
inline AudioClip MakeNoise(int channels, std::size_t frames) {
    unsigned state = 1;
    return MakeClip(channels, frames, [&](std::size_t, std::size_t) {
        state = state * 1664525U + 1013904223U;
        return static_cast<float>(static_cast<int>(state >> 17) - 16384) / 32768.0F;
    });
}

inline void WriteClip(std::filesystem::path const& path, AudioClip const& clip) {
    SF_INFO info{};
    info.channels = clip.channels;
    info.samplerate = clip.sampleRate;
    info.format = clip.format;
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
        throw std::runtime_error(sf_strerror(nullptr));
    if ((clip.format & SF_FORMAT_SUBMASK) == SF_FORMAT_FLOAT) {
        sf_write_float(file, clip.samples.data(), static_cast<sf_count_t>(clip.samples.size()));
    } else {
        // Scaled as libsndfile reads: 16-bit samples of a clip come back as they were.
        std::vector<int> whole;
        for (float const sample : clip.samples)
            whole.push_back(static_cast<int>(static_cast<double>(sample) * 2147483648.0));
        sf_write_int(file, whole.data(), static_cast<sf_count_t>(whole.size()));
    }
    sf_close(file);
}

inline AudioClip ReadClip(std::filesystem::path const& path) {
    SF_INFO info{};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
        throw std::runtime_error(path.string() + ": " + sf_strerror(nullptr));
    AudioClip clip{.channels = info.channels, .sampleRate = info.samplerate, .format = info.format};
    clip.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_read_float(file, clip.samples.data(), static_cast<sf_count_t>(clip.samples.size()));
    sf_close(file);
    return clip;
}

} // namespace vyntest
