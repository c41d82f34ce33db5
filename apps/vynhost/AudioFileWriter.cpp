#include "vynhost/AudioFileWriter.h"

#include "vynhost/CommandError.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <sndfile.h>
#include <stdexcept>

namespace vynhost {

namespace {

constexpr double kMostWavBytes = 4294967295.0 - 65536.0;

// With its time of writing in it, a chunk of peaks would make every run's file another.
void SetUpFile(SNDFILE* file, AudioFormat const& format) {
    sf_command(file, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    if (!format.speakers.empty()) {
        std::vector<int> speakers = format.speakers;
        sf_command(file, SFC_SET_CHANNEL_MAP_INFO, speakers.data(), static_cast<int>(speakers.size() * sizeof(int)));
    }
}

template <class Sample, class Convert>
void Interleave(float const* const* channels, std::size_t channelCount, std::size_t samples,
                std::vector<Sample>& interleaved, Convert const& convert) {
    interleaved.resize(channelCount * samples);
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < samples; ++i)
            interleaved[i * channelCount + channel] = convert(channels[channel][i]);
    }
}

} // namespace

void AudioFileWriter::Close::operator()(sf_private_tag* file) const noexcept {
    sf_close(file);
}

AudioFileWriter::AudioFileWriter(std::string const& path, AudioFormat const& format, std::int64_t samples)
    : mPath(path), mFormat(format) {
    double const bytes = static_cast<double>(samples) * format.channels * GetBytesPerSample(format);
    mLong = bytes > kMostWavBytes;
    try {
        mReplacement.emplace(path, [this](std::string const& temporary) { mRemoval.emplace(temporary); });
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(path, error.what());
    }
    SF_INFO info{};
    info.channels = format.channels;
    info.samplerate = format.sampleRate;
    info.format = mLong ? SF_FORMAT_RF64 | (format.type & SF_FORMAT_SUBMASK) : format.type;
    mFile.reset(sf_open_fd(mReplacement->GetDescriptor(), SFM_WRITE, &info, SF_FALSE));
    if (!mFile)
        throw CommandError::OfFile(path, std::string("cannot be written: ") + sf_strerror(nullptr));
    SetUpFile(mFile.get(), format);
}

void AudioFileWriter::Write(float const* const* channels, int samples) {
    auto const channelCount = static_cast<std::size_t>(mFormat.channels);
    auto const count = static_cast<std::size_t>(samples);
    sf_count_t written = 0;
    if (GetIntegerBits(mFormat) == 0) {
        Interleave(channels, channelCount, count, mFloats, [](float sample) { return sample; });
        written = sf_writef_float(mFile.get(), mFloats.data(), samples);
    } else {
        Interleave(channels, channelCount, count, mIntegers, [this](float sample) { return Quantize(sample); });
        written = sf_writef_int(mFile.get(), mIntegers.data(), samples);
    }
    if (written != samples)
        ThrowWriteError();
}

// Rounded here and not by libsndfile, which cuts bits off, and scales down to do so: audio that went through unchanged
// is written as it was read. Its whole numbers keep the sample in their upper bits.
int AudioFileWriter::Quantize(float sample) noexcept {
    int const bits = GetIntegerBits(mFormat);
    double const fullScale = std::ldexp(1.0, bits - 1);
    double value = std::nearbyint(static_cast<double>(sample) * fullScale);
    if (value < -fullScale || value > fullScale - 1.0) {
        ++mClipped;
        value = value < 0.0 ? -fullScale : fullScale - 1.0;
    }
    return static_cast<int>(std::ldexp(value, 32 - bits));
}

void AudioFileWriter::ThrowWriteError() const {
    int const error = errno;
    bool const bySystem = sf_error(mFile.get()) == SF_ERR_SYSTEM && error != 0;
    throw CommandError::OfFile(mPath, std::string("could not be written: ") +
                                          (bySystem ? std::strerror(error) : "the disk takes no more"));
}

void AudioFileWriter::Commit() {
    sf_command(mFile.get(), SFC_UPDATE_HEADER_NOW, nullptr, 0);
    bool const whole = sf_error(mFile.get()) == SF_ERR_NO_ERROR;
    if (sf_close(mFile.release()) != 0 || !whole)
        throw CommandError::OfFile(mPath, "could not be written: its header could not be completed");
    try {
        mReplacement->Commit();
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(mPath, error.what());
    }
}

} // namespace vynhost
