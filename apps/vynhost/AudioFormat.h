#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// What an audio file is apart from its samples. A plain record.
struct AudioFormat {
    int channels = 0;
    int sampleRate = 0;        ///< in hertz
    int type = 0;              ///< container and sample format as libsndfile numbers them
    std::vector<int> speakers; ///< libsndfile's channel map, empty when the file has none
};

/// The format of a WAV file with `channels` channels in which audio of the format `input` is written: its sample format
/// where WAV can hold that, and otherwise the nearest that loses nothing.
/// [any-thread]
AudioFormat ChooseWavFormat(AudioFormat const& input, int channels);

/// Whether a sample is stored the same way in both.
/// [any-thread]
bool HaveSameSampleFormat(AudioFormat const& left, AudioFormat const& right);

/// The bytes of one sample of one channel in a format of ChooseWavFormat.
/// [any-thread]
int GetBytesPerSample(AudioFormat const& format);

/// The bits of a sample that is stored as a whole number, of a format of ChooseWavFormat; 0 for floating point.
/// [any-thread]
int GetIntegerBits(AudioFormat const& format);

/// "16-bit", "float" and the like.
/// [any-thread]
std::string GetSampleFormatName(AudioFormat const& format);

} // namespace vynhost
