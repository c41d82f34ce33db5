#pragma once

#include "vynhost/AudioFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sf_private_tag;

namespace vynhost {

/// An audio file that is read from its start to its end, a stretch at a time. It reads every format that libsndfile
/// knows. All failures are CommandErrors that name the file.
class AudioFileReader {
public:
    /// Opens the file. One that is no audio file, is empty, or holds less than its header promises, is refused.
    /// [main-thread]
    explicit AudioFileReader(std::string const& path);

    /// [main-thread]
    AudioFormat const& GetFormat() const noexcept { return mFormat; }

    /// Samples per channel, above 0.
    /// [main-thread]
    std::int64_t GetSampleCount() const noexcept { return mSampleCount; }

    /// Fills channels[channel][sample] with the next samples, full scale being 1. Refuses to come up short.
    /// [main-thread]
    void Read(float* const* channels, int samples);

private:
    struct Close {
        void operator()(sf_private_tag* file) const noexcept;
    };

    std::string mPath;
    std::unique_ptr<sf_private_tag, Close> mFile;
    AudioFormat mFormat;
    std::int64_t mSampleCount = 0;
    std::int64_t mPosition = 0;
    std::vector<float> mInterleaved;
};

} // namespace vynhost
