#pragma once

#include <cstddef>
#include <vector>

namespace vynaudiofilterhost::vst {

/// The channel pointers of an effect that says it has more channels than its filter's buses: what the buses don't cover
/// reads silence and writes into a channel of scratch. The filter owns it; it is sized while the filter is suspended.
class VSTChannelBuffers {
public:
    /// @param inputs, outputs  channels that the effect says it has
    /// @param frames           the longest block, in samples
    /// [main-thread & suspended]
    void Allocate(int inputs, int outputs, int frames);
    /// [main-thread & suspended]
    void Free();

    /// Whether a block of the effect with so many channels, and so long, fits.
    /// [process-thread]
    bool Holds(int inputs, int outputs, int frames) const noexcept {
        return inputs <= Count(mInputs) && outputs <= Count(mOutputs) && frames <= mFrames;
    }

    /// The pointers for a block: the filter's own first, as many as it has of them, at most those allocated.
    /// [process-thread]
    float** Inputs(float* const* in, int count, int frames) noexcept;
    float** Outputs(float* const* out, int count) noexcept;

private:
    static int Count(std::vector<float*> const& channels) noexcept { return static_cast<int>(channels.size()); }

    std::vector<float*> mInputs;
    std::vector<float*> mOutputs;
    std::vector<float> mSilence; ///< cleared for every block: effects write into their inputs
    std::vector<float> mScratch;
    int mFrames = 0;
};

} // namespace vynaudiofilterhost::vst
