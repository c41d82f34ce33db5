#include "vynaudiofilterhost/VST3/src/VST3BusBuffers.h"

#include <algorithm>
#include <cstddef>

namespace vynaudiofilterhost::vst3 {

namespace {

constexpr std::int32_t kFlagBits = 64;

std::uint64_t LowBits(std::int32_t count) {
    return count >= kFlagBits ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

} // namespace

void VST3BusBuffers::Clear() {
    Free();
    mBuses.clear();
    mFilterChannels = 0;
}

void VST3BusBuffers::AddBus(std::int32_t pluginChannels, std::int32_t spareChannels, std::int32_t filterChannels) {
    filterChannels = std::min(filterChannels, pluginChannels);
    mBuses.push_back({pluginChannels, pluginChannels + spareChannels, filterChannels, mFilterChannels});
    mFilterChannels += filterChannels;
}

void VST3BusBuffers::Allocate(std::int32_t maxSamples) {
    std::size_t pointers = 0;
    bool needsSpare = false;
    for (Bus const& bus : mBuses) {
        pointers += static_cast<std::size_t>(bus.pointers);
        needsSpare = needsSpare || bus.pointers > bus.filterChannels;
    }
    mSpare.assign(needsSpare ? static_cast<std::size_t>(maxSamples) : 0, 0.0f);
    mPointers.assign(pointers, mSpare.data());
    mBuffers.assign(mBuses.size(), Steinberg::Vst::AudioBusBuffers());
}

void VST3BusBuffers::Free() {
    mBuffers.clear();
    mPointers.clear();
    mSpare.clear();
}

void VST3BusBuffers::Point(float* const* channels, std::int32_t offset) noexcept {
    // Everything anew for each slice: a plug-in can write to all of it, and what it wrote must not be followed.
    float** pointers = mPointers.data();
    for (std::size_t place = 0; place < mBuffers.size(); ++place) {
        Bus const& bus = mBuses[place];
        mBuffers[place].numChannels = bus.pluginChannels;
        mBuffers[place].channelBuffers32 = pointers;
        for (std::int32_t channel = 0; channel < bus.filterChannels; ++channel)
            *pointers++ = channels[bus.firstChannel + channel] + offset;
        for (std::int32_t channel = bus.filterChannels; channel < bus.pointers; ++channel)
            *pointers++ = mSpare.data();
    }
}

void VST3BusBuffers::SetSilence(ChannelFlags silent) noexcept {
    std::fill(mSpare.begin(), mSpare.end(), 0.0f);
    for (std::size_t place = 0; place < mBuffers.size(); ++place) {
        Bus const& bus = mBuses[place];
        std::uint64_t flags = LowBits(bus.pluginChannels) & ~LowBits(bus.filterChannels);
        if (bus.firstChannel + bus.filterChannels <= kFlagBits) {
            flags |= bus.filterChannels > 0 ? silent.GetBits() >> bus.firstChannel & LowBits(bus.filterChannels) : 0;
        } else {
            ChannelFlags busFlags(flags);
            for (std::int32_t channel = 0; channel < bus.filterChannels; ++channel) {
                if (silent.Test(static_cast<unsigned>(bus.firstChannel + channel)))
                    busFlags.Set(static_cast<unsigned>(channel));
            }
            flags = busFlags.GetBits();
        }
        mBuffers[place].silenceFlags = flags;
    }
}

void VST3BusBuffers::ClearSilence() noexcept {
    for (Steinberg::Vst::AudioBusBuffers& buffers : mBuffers)
        buffers.silenceFlags = 0;
}

ChannelFlags VST3BusBuffers::GetSilence() const noexcept {
    std::uint64_t flags = 0;
    for (std::size_t place = 0; place < mBuffers.size() && mBuses[place].firstChannel < kFlagBits; ++place) {
        // A plug-in that sets more bits than it has channels must not silence the next bus.
        flags |= (mBuffers[place].silenceFlags & LowBits(mBuses[place].filterChannels)) << mBuses[place].firstChannel;
    }
    ChannelFlags silent(flags);
    for (std::size_t place = 0; mFilterChannels > kFlagBits && place < mBuffers.size(); ++place)
        ClearSharedFlags(place, silent);
    return silent;
}

void VST3BusBuffers::ClearSharedFlags(std::size_t place, ChannelFlags& silent) const noexcept {
    // Channels 64 apart share a flag: one of them that sounds must not pass for silent.
    Bus const& bus = mBuses[place];
    for (std::int32_t channel = 0; channel < bus.filterChannels; ++channel) {
        bool const isSilent = channel < kFlagBits && (mBuffers[place].silenceFlags >> channel & 1) != 0;
        if (bus.firstChannel + channel >= kFlagBits && !isSilent)
            silent.Clear(static_cast<unsigned>(bus.firstChannel + channel));
    }
}

} // namespace vynaudiofilterhost::vst3
