#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace vynaudiofilterhost {

void AudioFilter::BuildChannelMaps() {
    mSilence.assign(static_cast<std::size_t>(std::max(mBlockSize, 0)), 0.0f);
    mMappedInputs.assign(static_cast<std::size_t>(GetNumberOfInputChannels()), nullptr);
}

// Points the filter's inputs at the caller's buffers, or at silence where the caller says that there is nothing to
// read. Gives the flags that the filter is to see.
ChannelFlags AudioFilter::MapInputs(float** in, ChannelFlags inFlags) noexcept {
    std::size_t const count = mMappedInputs.size();
    float** const mapped = mMappedInputs.data();
    if (inFlags.GetBits() == 0) {
        for (std::size_t channel = 0; channel < count; ++channel)
            mapped[channel] = in[channel];
        return ChannelFlags(count < 64 ? ~std::uint64_t{0} << count : 0);
    }
    ChannelFlags filterFlags;
    filterFlags.SetAll();
    for (std::size_t channel = 0; channel < count; ++channel) {
        bool const silent = inFlags.Test(static_cast<unsigned>(channel));
        mapped[channel] = silent ? mSilence.data() : in[channel];
        if (!silent)
            filterFlags.Clear(static_cast<unsigned>(channel));
    }
    return filterFlags;
}

void AudioFilter::ProcessWithMapping(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                     ChannelFlags& outFlags) {
    assert(numSamples <= std::max(mBlockSize, 0) || mMappedInputs.empty());
    ChannelFlags const filterInFlags = MapInputs(in, inFlags);
    // Parameter messages take effect here, ahead of the audio of this block.
    mMessageHandler.PumpFromProcessThread();
    ChannelFlags filterOutFlags;
    Process(mMappedInputs.data(), out, numSamples, filterInFlags, filterOutFlags);
    outFlags = filterOutFlags;
}

} // namespace vynaudiofilterhost
