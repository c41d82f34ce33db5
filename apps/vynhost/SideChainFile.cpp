#include "vynhost/SideChainFile.h"

#include "vynhost/CommandError.h"

#include <algorithm>
#include <span>

namespace vynhost {

SideChainFile::SideChainFile(std::string const& path, AudioFormat const& main) : mReader(path) {
    if (GetFormat().sampleRate != main.sampleRate)
        throw CommandError::OfFile(path, "does not fit: its sample rate is " + std::to_string(GetFormat().sampleRate) +
                                             " Hz, and that of the input " + std::to_string(main.sampleRate) + " Hz");
}

void SideChainFile::Read(float* const* channels, int samples) {
    std::int64_t const left = mReader.GetSampleCount() - mPosition;
    int const present = static_cast<int>(std::min<std::int64_t>(left, samples));
    if (present > 0)
        mReader.Read(channels, present);
    mPosition += present;
    for (float* channel : std::span(channels, static_cast<std::size_t>(GetFormat().channels))) {
        mMeter.Add({channel, static_cast<std::size_t>(present)});
        std::fill(channel + present, channel + samples, 0.0f);
    }
}

std::vector<std::string> SideChainFile::Describe(std::int64_t mainSamples) const {
    std::vector<std::string> notes;
    std::int64_t const missing = mainSamples - mReader.GetSampleCount();
    if (missing > 0)
        notes.push_back("the side chain is silent for the last " + std::to_string(missing) +
                        " samples: its file is shorter");
    if (missing < 0)
        notes.push_back("the last " + std::to_string(-missing) + " samples of the side chain are not used");
    if (mMeter.GetNonFiniteCount() > 0)
        notes.push_back(std::to_string(mMeter.GetNonFiniteCount()) +
                        " samples of the side chain are not finite (NaN or infinite) and were taken as 0");
    return notes;
}

} // namespace vynhost
