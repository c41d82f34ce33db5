#include "vynhost/AudioFormat.h"

#include <sndfile.h>

namespace vynhost {

namespace {

// Sample formats that cut audio into blocks, or lose more at each writing, give way to plain ones.
int WavSampleFormat(int sampleFormat) {
    switch (sampleFormat) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_DPCM_8:
        return SF_FORMAT_PCM_U8;
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
        return sampleFormat;
    case SF_FORMAT_ALAC_20:
    case SF_FORMAT_ALAC_24:
    case SF_FORMAT_DWVW_24:
        return SF_FORMAT_PCM_24;
    case SF_FORMAT_ALAC_32:
        return SF_FORMAT_PCM_32;
    case SF_FORMAT_VORBIS:
    case SF_FORMAT_OPUS:
    case SF_FORMAT_MPEG_LAYER_I:
    case SF_FORMAT_MPEG_LAYER_II:
    case SF_FORMAT_MPEG_LAYER_III:
        return SF_FORMAT_FLOAT;
    default:
        return SF_FORMAT_PCM_16;
    }
}

int GetSampleFormat(AudioFormat const& format) {
    return format.type & SF_FORMAT_SUBMASK;
}

} // namespace

AudioFormat ChooseWavFormat(AudioFormat const& input, int channels) {
    AudioFormat format{channels, input.sampleRate, 0, {}};
    // The plain header has no word for which speaker a channel belongs to, and so is for one and two channels alone.
    bool const extensible = channels > 2 || (input.type & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAVEX;
    format.type = (extensible ? SF_FORMAT_WAVEX : SF_FORMAT_WAV) | WavSampleFormat(GetSampleFormat(input));
    if (extensible && channels == input.channels)
        format.speakers = input.speakers;
    return format;
}

bool HaveSameSampleFormat(AudioFormat const& left, AudioFormat const& right) {
    return GetSampleFormat(left) == GetSampleFormat(right);
}

int GetBytesPerSample(AudioFormat const& format) {
    switch (GetSampleFormat(format)) {
    case SF_FORMAT_PCM_16:
        return 2;
    case SF_FORMAT_PCM_24:
        return 3;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
        return 4;
    case SF_FORMAT_DOUBLE:
        return 8;
    default:
        return 1;
    }
}

int GetIntegerBits(AudioFormat const& format) {
    switch (GetSampleFormat(format)) {
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
        return 0;
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
        return 16;
    default:
        return 8 * GetBytesPerSample(format);
    }
}

std::string GetSampleFormatName(AudioFormat const& format) {
    switch (GetSampleFormat(format)) {
    case SF_FORMAT_FLOAT:
        return "float";
    case SF_FORMAT_DOUBLE:
        return "double";
    case SF_FORMAT_ULAW:
        return "mu-law";
    case SF_FORMAT_ALAW:
        return "A-law";
    default:
        return std::to_string(GetIntegerBits(format)) + "-bit";
    }
}

} // namespace vynhost
