#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace vynaudiofilterhost {

void AudioFilter::BuildChannelMaps() {
    mSilence.assign(static_cast<std::size_t>(std::max(mBlockSize, 0)), 0.0f);
    mMappedInputs.assign(static_cast<std::size_t>(GetNumberOfInputChannels()), nullptr);
}

void AudioFilter::ProcessWithMapping(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                     ChannelFlags& outFlags) {
    assert(numSamples <= std::max(mBlockSize, 0) || mMappedInputs.empty());
    ChannelFlags filterInFlags;
    filterInFlags.SetAll();
    unsigned channel = 0;
    for (float*& mapped : mMappedInputs) {
        bool const silent = inFlags.Test(channel);
        mapped = silent ? mSilence.data() : in[channel];
        if (!silent)
            filterInFlags.Clear(channel);
        ++channel;
    }
    // Parameter messages take effect here, ahead of the audio of this block.
    mMessageHandler.PumpFromProcessThread();
    ChannelFlags filterOutFlags;
    Process(mMappedInputs.data(), out, numSamples, filterInFlags, filterOutFlags);
    outFlags = filterOutFlags;
}

} // namespace vynaudiofilterhost
