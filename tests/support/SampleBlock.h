#pragma once

#include <cstddef>
#include <vector>

namespace vyntest {

/// Channels of samples, and the pointers to them that a filter takes. Owned by the test.
/// [any-thread]
class SampleBlock {
public:
    /// Channel c's sample s is c + 1 + s / 65536.
    SampleBlock(int channels, int samples) : mSamples(static_cast<std::size_t>(channels)) {
        for (std::size_t channel = 0; channel < mSamples.size(); ++channel) {
            for (int sample = 0; sample < samples; ++sample)
                mSamples[channel].push_back(static_cast<float>(channel + 1) + static_cast<float>(sample) / 65536.0f);
            mPointers.push_back(mSamples[channel].data());
        }
    }
    SampleBlock(SampleBlock const&) = delete;
    SampleBlock& operator=(SampleBlock const&) = delete;

    float** Get() { return mPointers.data(); }
    std::vector<float> const& operator[](std::size_t channel) const { return mSamples[channel]; }

    /// The first sample of each channel.
    std::vector<float> Firsts() const {
        std::vector<float> firsts;
        for (std::vector<float> const& channel : mSamples)
            firsts.push_back(channel.front());
        return firsts;
    }

private:
    std::vector<std::vector<float>> mSamples;
    std::vector<float*> mPointers;
};

} // namespace vyntest
