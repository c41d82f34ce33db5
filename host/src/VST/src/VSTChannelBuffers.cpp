#include "vynaudiofilterhost/VST/src/VSTChannelBuffers.h"

#include <algorithm>

namespace vynaudiofilterhost::vst {

void VSTChannelBuffers::Allocate(int inputs, int outputs, int frames) {
    mFrames = std::max(frames, 0);
    mSilence.assign(static_cast<std::size_t>(mFrames), 0.0f);
    mScratch.assign(static_cast<std::size_t>(mFrames), 0.0f);
    mInputs.assign(static_cast<std::size_t>(inputs), nullptr);
    mOutputs.assign(static_cast<std::size_t>(outputs), nullptr);
}

void VSTChannelBuffers::Free() {
    *this = VSTChannelBuffers();
}

float** VSTChannelBuffers::Inputs(float* const* in, int count, int frames) noexcept {
    std::fill_n(mSilence.begin(), frames, 0.0f);
    auto const own = mInputs.begin() + std::min(count, Count(mInputs));
    std::copy(in, in + (own - mInputs.begin()), mInputs.begin());
    std::fill(own, mInputs.end(), mSilence.data());
    return mInputs.data();
}

float** VSTChannelBuffers::Outputs(float* const* out, int count) noexcept {
    auto const own = mOutputs.begin() + std::min(count, Count(mOutputs));
    std::copy(out, out + (own - mOutputs.begin()), mOutputs.begin());
    std::fill(own, mOutputs.end(), mScratch.data());
    return mOutputs.data();
}

} // namespace vynaudiofilterhost::vst
