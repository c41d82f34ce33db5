#pragma once

#include "vynhost/AudioFormat.h"

#include "os/FileRemovalOnSignals.h"
#include "os/ReplacementFile.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sf_private_tag;

namespace vynhost {

/// A WAV file in the making. It appears under its name when it is complete, and not at all when anything fails before
/// that; a file that was there is replaced then. All failures are CommandErrors that name the file.
///
/// Life: made; written to; Commit. Equal audio gives equal bytes.
class AudioFileWriter {
public:
    /// @param format   a format of ChooseWavFormat
    /// @param samples  per channel, about as many as there will be: more than a WAV file can hold make it an RF64 file
    /// [main-thread]
    AudioFileWriter(std::string const& path, AudioFormat const& format, std::int64_t samples);

    /// Appends channels[channel][sample], full scale being 1. What is beyond full scale is clipped in whole numbers.
    /// [main-thread]
    void Write(float const* const* channels, int samples);

    /// Completes the file and puts it in its place.
    /// [main-thread]
    void Commit();

    /// Whether it is an RF64 file.
    /// [main-thread]
    bool IsLong() const noexcept { return mLong; }

    /// Samples of all channels that were clipped.
    /// [main-thread]
    std::int64_t GetClippedCount() const noexcept { return mClipped; }

private:
    struct Close {
        void operator()(sf_private_tag* file) const noexcept;
    };

    [[noreturn]] void ThrowWriteError() const;
    int Quantize(float sample) noexcept;

    std::string mPath;
    AudioFormat mFormat;
    bool mLong = false;
    std::optional<os::FileRemovalOnSignals> mRemoval; ///< of the replacement's temporary file; outlives it
    std::optional<os::ReplacementFile> mReplacement;
    std::unique_ptr<sf_private_tag, Close> mFile;
    std::vector<float> mFloats;
    std::vector<int> mIntegers;
    std::int64_t mClipped = 0;
};

} // namespace vynhost
