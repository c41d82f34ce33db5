#include "vynaudiofilterhost/VST3/src/VST3BusBuffers.h"

#include <algorithm>
#include <cstddef>

namespace vynaudiofilterhost::vst3 {

namespace {

std::uint64_t LowBits(std::int32_t count) {
    return count >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

} // namespace

void VST3BusBuffers::Clear() {
    Free();
    mBuses.clear();
    mFilterChannels = 0;
}

void VST3BusBuffers::AddBus(std::int32_t pluginChannels, std::int32_t spareChannels, std::int32_t filterChannels) {
    Bus bus{};
    bus.pluginChannels = pluginChannels;
    bus.filterChannels = std::min(filterChannels, pluginChannels);
    bus.spareChannels = pluginChannels + spareChannels - bus.filterChannels;
    bus.firstChannel = mFilterChannels;
    bus.filterBits = LowBits(bus.filterChannels);
    bus.hiddenBits = LowBits(pluginChannels) & ~bus.filterBits;
    mBuses.push_back(bus);
    mFilterChannels += bus.filterChannels;
}

void VST3BusBuffers::Allocate(std::int32_t maxSamples) {
    std::size_t pointers = 0;
    bool needsSpare = false;
    for (Bus const& bus : mBuses) {
        pointers += static_cast<std::size_t>(bus.filterChannels + bus.spareChannels);
        needsSpare = needsSpare || bus.spareChannels > 0;
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

void VST3BusBuffers::SetSilenceSlowly(ChannelFlags silent) noexcept {
    std::fill(mSpare.begin(), mSpare.end(), 0.0f);
    Bus const* bus = mBuses.data();
    for (Steinberg::Vst::AudioBusBuffers& buffers : mBuffers) {
        buffers.silenceFlags = bus->hiddenBits | SharedFlags(*bus, silent);
        ++bus;
    }
}

ChannelFlags VST3BusBuffers::GetSilenceSlowly() const noexcept {
    ChannelFlags silent;
    for (std::size_t place = 0; place < mBuffers.size(); ++place) {
        for (std::int32_t channel = 0; channel < std::min(mBuses[place].filterChannels, kFlagBits); ++channel) {
            std::int32_t const number = mBuses[place].firstChannel + channel;
            if (number < kFlagBits && (mBuffers[place].silenceFlags >> channel & 1) != 0)
                silent.Set(static_cast<unsigned>(number));
        }
    }
    for (std::size_t place = 0; place < mBuffers.size(); ++place)
        ClearSharedFlags(place, silent);
    return silent;
}

std::uint64_t VST3BusBuffers::SharedFlags(Bus const& bus, ChannelFlags silent) noexcept {
    ChannelFlags flags;
    for (std::int32_t channel = 0; channel < bus.filterChannels; ++channel) {
        if (silent.Test(static_cast<unsigned>(bus.firstChannel + channel)))
            flags.Set(static_cast<unsigned>(channel));
    }
    return flags.GetBits();
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
