#include "vynhost/AudioFileReader.h"

#include "vynhost/AudioContainer.h"
#include "vynhost/CommandError.h"
#include "vynhost/InputFile.h"

#include <optional>
#include <sndfile.h>

namespace vynhost {

namespace {

void CheckWhole(std::string const& path) {
    if (std::optional<Shortfall> const shortfall = FindShortfall(path))
        throw CommandError::OfFile(path, "is truncated: its header promises " +
                                             std::to_string(shortfall->promisedBytes) + " bytes of audio, and " +
                                             std::to_string(shortfall->presentBytes) + " are there");
}

std::vector<int> ReadSpeakers(SNDFILE* file, int channels) {
    std::vector<int> speakers(static_cast<std::size_t>(channels));
    int const bytes = channels * static_cast<int>(sizeof(int));
    if (sf_command(file, SFC_GET_CHANNEL_MAP_INFO, speakers.data(), bytes) == SF_FALSE)
        speakers.clear();
    return speakers;
}

} // namespace

void AudioFileReader::Close::operator()(sf_private_tag* file) const noexcept {
    sf_close(file);
}

AudioFileReader::AudioFileReader(std::string const& path) : mPath(path) {
    CheckInputFile(path);
    SF_INFO info{};
    mFile.reset(sf_open(path.c_str(), SFM_READ, &info));
    if (!mFile)
        throw CommandError::OfFile(path, std::string("is no audio file: ") + sf_strerror(nullptr));
    CheckWhole(path);
    if (info.frames <= 0)
        throw CommandError::OfFile(path, "holds no audio: it has 0 samples");
    if (info.channels <= 0 || info.samplerate <= 0)
        throw CommandError::OfFile(path, "holds no audio: it has no channels or no sample rate");
    mSampleCount = info.frames;
    mFormat = {info.channels, info.samplerate, info.format, ReadSpeakers(mFile.get(), info.channels)};
}

void AudioFileReader::Read(float* const* channels, int samples) {
    auto const channelCount = static_cast<std::size_t>(mFormat.channels);
    mInterleaved.resize(static_cast<std::size_t>(samples) * channelCount);
    sf_count_t const read = sf_readf_float(mFile.get(), mInterleaved.data(), samples);
    if (read != samples)
        throw CommandError::OfFile(mPath, "is truncated: its header promises " + std::to_string(mSampleCount) +
                                              " samples, and " + std::to_string(mPosition + read) + " could be read");
    mPosition += read;
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(samples); ++i)
            channels[channel][i] = mInterleaved[i * channelCount + channel];
    }
}

} // namespace vynhost
