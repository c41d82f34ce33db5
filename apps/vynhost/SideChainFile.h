#pragma once

#include "vynhost/AudioFileReader.h"
#include "vynhost/LevelMeter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vynhost {

/// The audio file that a plug-in hears beside its main input: silence follows its end. All failures are CommandErrors
/// that name the file.
class SideChainFile {
public:
    /// Opens the file. One that AudioFileReader refuses, or that has another sample rate than the main file, is
    /// refused.
    /// [main-thread]
    SideChainFile(std::string const& path, AudioFormat const& main);

    /// [main-thread]
    AudioFormat const& GetFormat() const noexcept { return mReader.GetFormat(); }

    /// Fills channels[channel][sample] with the next samples. Samples that are no finite number are taken as 0.
    /// [main-thread]
    void Read(float* const* channels, int samples);

    /// What a user should know about it beside a main file of so many samples.
    /// [main-thread]
    std::vector<std::string> Describe(std::int64_t mainSamples) const;

private:
    AudioFileReader mReader;
    LevelMeter mMeter;
    std::int64_t mPosition = 0;
};

} // namespace vynhost
