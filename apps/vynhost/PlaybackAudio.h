#pragma once

#include "vynhost/AudioFormat.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vynhost {

class AudioFileReader;

/// The whole of an audio file in memory, at a sample rate of the caller's choosing, for playing it over and over. What
/// lasts less than a second is there several times in a row, so that a loop never turns within a block.
class PlaybackAudio {
public:
    /// Reads the file and converts its rate where that differs. Samples that are no finite number become 0. Throws
    /// CommandError, with the file, for what can't be read, or would take more than 768 MiB: half an hour of stereo at
    /// 48 kHz.
    /// @param sampleRate  in hertz, above 0
    /// [main-thread]
    PlaybackAudio(std::string const& path, int sampleRate);

    /// Of the file.
    /// [any-thread]
    AudioFormat const& GetFormat() const noexcept { return mFormat; }

    /// Samples per channel at the chosen rate; at least a second.
    /// [any-thread]
    std::int64_t GetSampleCount() const noexcept { return static_cast<std::int64_t>(mChannels.front().size()); }

    /// The samples of a channel from a position on, for reading.
    /// [any-thread]
    float* GetSamples(std::size_t channel, std::int64_t position) noexcept {
        return mChannels[channel].data() + position;
    }

private:
    void Read(AudioFileReader& reader);
    void ReadConverted(AudioFileReader& reader, double ratio);
    void FillSecond(int sampleRate);

    AudioFormat mFormat;
    std::vector<std::vector<float>> mChannels; ///< [channel][sample]
};

} // namespace vynhost
