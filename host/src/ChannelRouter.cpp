#include "vynaudiofilterhost/ChannelRouter.h"

#include "vynaccelerate/Buffers.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <algorithm>
#include <atomic>

namespace vynaudiofilterhost {

using vynmediatypes::ChannelMap;

namespace {

constexpr int kNone = ChannelMap::kSourceChannelIndex_NoMatch;

std::size_t Size(int count) {
    return static_cast<std::size_t>(std::max(count, 0));
}

// The counterpart of CopyChannelMapIndexVector.
int Load(int& index) noexcept {
    return std::atomic_ref<int>(index).load(std::memory_order_acquire);
}

/// The channels of a track as the buffers of a block hold them: so many main ones as were sized, then the side chain.
struct Target {
    int mainChannels;      ///< now
    int sizedMainChannels; ///< when everything was sized
    int sideChainChannels; ///< now

    /// The place of the buffer of a target channel, or -1 when there is none.
    int PlaceOf(int channel) const {
        if (channel < 0 || channel >= mainChannels + sideChainChannels)
            return kNone;
        if (channel >= mainChannels)
            return sizedMainChannels + channel - mainChannels;
        return channel < sizedMainChannels ? channel : kNone;
    }
};

// The buffers of so many filter channels, and which main ones are used.
std::vector<int> Connect(ChannelMap const& map, std::size_t channels, Target const& target, std::vector<bool>& used) {
    std::vector<int> indices(channels, kNone);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        int const place = target.PlaceOf(map[static_cast<int>(channel)]);
        indices[channel] = place;
        if (place >= 0 && static_cast<std::size_t>(place) < used.size())
            used[static_cast<std::size_t>(place)] = true;
    }
    return indices;
}

} // namespace

void ChannelRouter::SizeDirect(int inputChannels, int blockSize) {
    mMapped = false;
    mSilence.assign(Size(blockSize), 0.0f);
    mScratch.assign(Size(blockSize), 0.0f);
    mMappedInputs.assign(Size(inputChannels), nullptr);
}

void ChannelRouter::SizeMapped(Shape const& shape) {
    SizeDirect(shape.inputChannels, shape.blockSize);
    mSilenceAround.assign(Size(shape.blockSize), 0.0f);
    std::ranges::fill(mMappedInputs, mSilence.data());
    mInputIndices.assign(Size(shape.inputChannels), kNone);
    mOutputIndices.assign(Size(shape.outputChannels), kNone);
    mBlockOutputs.assign(Size(shape.outputChannels), kNone);
    mMappedOutputs.assign(Size(shape.outputChannels), mScratch.data());
    mPassThrough.assign(Size(shape.mainChannels), kNone);
    mMainInputs.assign(Size(shape.mainChannels), mSilenceAround.data());
    mDelayLine.reset();
    if (shape.mainChannels > 0 && shape.passesAround)
        mDelayLine.reset(new DelayLine(static_cast<unsigned>(std::max(shape.blockSize, 0)),
                                       static_cast<unsigned>(std::max(shape.delay, 0)),
                                       static_cast<unsigned>(shape.mainChannels)));
    mMapped = true;
}

void ChannelRouter::Update(ChannelMap const& inputMap, ChannelMap const& outputMap, int mainChannels,
                           int sideChainChannels) {
    if (!mMapped)
        return;
    Target target{mainChannels, static_cast<int>(mPassThrough.size()), sideChainChannels};
    std::vector<bool> read(mPassThrough.size());
    std::vector<bool> fed(mPassThrough.size());
    std::vector<int> const inputs = Connect(inputMap, mInputIndices.size(), target, read);
    target.sideChainChannels = 0; // nothing is written there
    std::vector<int> const outputs = Connect(outputMap, mOutputIndices.size(), target, fed);
    // What the filter takes and gives nothing back for does not go around it: its flag stays set.
    std::vector<int> passThrough(mPassThrough.size(), kNone);
    for (std::size_t channel = 0; channel < std::min(passThrough.size(), Size(mainChannels)); ++channel) {
        if (!fed[channel] && !read[channel])
            passThrough[channel] = static_cast<int>(channel);
    }
    utility::CopyChannelMapIndexVector(inputs, mInputIndices);
    utility::CopyChannelMapIndexVector(outputs, mOutputIndices);
    utility::CopyChannelMapIndexVector(passThrough, mPassThrough);
}

void ChannelRouter::MapByList(float**& in, float**& out, ChannelFlags& inFlags) noexcept {
    if (!mInputIndices.empty()) {
        float** const source = in;
        float** const mapped = in = mMappedInputs.data();
        float* const silence = mSilence.data();
        ChannelFlags flags;
        flags.SetAll();
        unsigned channel = 0;
        for (int& index : mInputIndices) {
            int const target = Load(index);
            bool const live = target >= 0 && !inFlags.Test(static_cast<unsigned>(target));
            mapped[channel] = live ? source[target] : silence;
            if (live)
                flags.Clear(channel);
            ++channel;
        }
        inFlags = flags;
    }
    if (!mOutputIndices.empty()) {
        float** const destination = out;
        float** const mapped = out = mMappedOutputs.data();
        float* const scratch = mScratch.data();
        int* const targets = mBlockOutputs.data();
        std::size_t channel = 0;
        for (int& index : mOutputIndices) {
            int const target = targets[channel] = Load(index);
            mapped[channel++] = target >= 0 ? destination[target] : scratch;
        }
    }
}

// A target channel sounds when a filter channel that feeds it does, or when it goes around the filter and came in
// sounding. Of channels that share a flag, one that sounds decides.
ChannelFlags ChannelRouter::FinishOutputsByList(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                                ChannelFlags filterFlags) noexcept {
    ChannelFlags flags;
    flags.SetAll();
    unsigned channel = 0;
    for (int const target : mBlockOutputs) {
        if (target >= 0 && !filterFlags.Test(channel))
            flags.Clear(static_cast<unsigned>(target));
        ++channel;
    }
    return mDelayLine ? PassAround(in, out, static_cast<unsigned>(numSamples), inFlags, flags) : flags;
}

ChannelFlags ChannelRouter::PassAround(float** in, float** out, unsigned samples, ChannelFlags inFlags,
                                       ChannelFlags flags) noexcept {
    if (inFlags.GetBits() != 0)
        in = HideSilentChannels(in, inFlags);
    // All channels are kept, so that one that begins to go around the filter has its past. A block that is not shorter
    // than the delay need not be kept whole: what comes out is what was kept, followed by the block itself.
    std::size_t const delay = mDelayLine->GetDelay();
    float** kept = delay > 0 ? mDelayLine->ExchangeTail(in, samples) : in;
    std::size_t const keptSamples = kept ? delay : samples;
    if (!kept)
        mDelayLine->WriteData(in, samples);
    for (int& index : mPassThrough) {
        int const channel = Load(index);
        if (channel < 0)
            continue;
        if (!kept)
            kept = mDelayLine->GetDelayedOutput(samples);
        if (!kept)
            return flags;
        // The end first: the two may be one buffer.
        vynaccelerate::utility::Copy(samples - keptSamples, in[channel], out[channel] + keptSamples);
        vynaccelerate::utility::Copy(keptSamples, kept[channel], out[channel]);
        if (!inFlags.Test(static_cast<unsigned>(channel)))
            flags.Clear(static_cast<unsigned>(channel));
    }
    return flags;
}

// What lies in the buffer of a channel that is declared silent must not come out once the channel sounds again.
float** ChannelRouter::HideSilentChannels(float** in, ChannelFlags inFlags) noexcept {
    for (std::size_t channel = 0; channel < mMainInputs.size(); ++channel)
        mMainInputs[channel] = inFlags.Test(static_cast<unsigned>(channel)) ? mSilenceAround.data() : in[channel];
    return mMainInputs.data();
}

} // namespace vynaudiofilterhost
