#pragma once

#include "vynaudiofilterhost/AudioFilter.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vynaudiofilterhost::vst3 {

/// The buffers of one direction as a plug-in sees them: one AudioBusBuffers per bus that the plug-in says it has, with
/// as many channels as the plug-in says that the bus has.
///
/// The channels that the filter shows are pointed at the caller's buffers, slice by slice. A plug-in's channel that the
/// filter doesn't show (a bus whose arrangement can't be read, speakers that have no label) reads silence, or writes
/// what nobody reads. A filter owns one per direction; the lists of buses are described while it is suspended, and the
/// buffers exist from Allocate to Free.
class VST3BusBuffers {
public:
    /// Forgets all buses. [main-thread & suspended]
    void Clear();

    /// Describes the next bus of the plug-in.
    /// @param pluginChannels  channels that the plug-in counts in the bus
    /// @param spareChannels   channels for which there is a pointer besides, in case the plug-in reads further
    /// @param filterChannels  channels that the filter shows of it, the first ones
    /// [main-thread & suspended]
    void AddBus(std::int32_t pluginChannels, std::int32_t spareChannels, std::int32_t filterChannels);

    /// Makes the buffers, with spare room for slices of up to maxSamples samples. [main-thread & suspended]
    void Allocate(std::int32_t maxSamples);

    /// Frees the buffers; the plug-in sees no bus then. [main-thread & suspended]
    void Free();

    /// The number of buses that have buffers, and the first of them; 0 and null without Allocate.
    /// [process-thread | main-thread & suspended]
    std::int32_t GetCount() const { return static_cast<std::int32_t>(mBuffers.size()); }
    Steinberg::Vst::AudioBusBuffers* GetData() { return mBuffers.empty() ? nullptr : mBuffers.data(); }

    // What runs for every block stands here, so that it becomes part of the caller.

    /// Points the filter's channels at the caller's buffers, offset samples in.
    /// @param channels  channels[channel][sample], all buses in order [process-thread]
    void Point(float* const* channels, std::int32_t offset) noexcept;

    /// Sets each bus's flags from those of the filter's channels; channels that the filter doesn't show are silent.
    /// [process-thread]
    void SetSilence(ChannelFlags silent) noexcept;

    /// Clears each bus's flags. [process-thread]
    void ClearSilence() noexcept;

    /// The flags of the filter's channels as the plug-in left them. [process-thread]
    ChannelFlags GetSilence() const noexcept;

private:
    static constexpr std::int32_t kFlagBits = 64;

    struct Bus {
        std::int32_t pluginChannels;
        std::int32_t filterChannels;
        std::int32_t spareChannels; ///< pointers besides those of the filter's channels
        std::int32_t firstChannel;  ///< the number of its first channel among the filter's
        std::uint64_t filterBits;   ///< flags of the filter's channels, within the bus
        std::uint64_t hiddenBits;   ///< flags of the others that the plug-in counts
    };

    // With channels that the filter doesn't show, or more of them than flags.
    void SetSilenceSlowly(ChannelFlags silent) noexcept;
    ChannelFlags GetSilenceSlowly() const noexcept;
    static std::uint64_t SharedFlags(Bus const& bus, ChannelFlags silent) noexcept;
    void ClearSharedFlags(std::size_t place, ChannelFlags& silent) const noexcept;

    std::vector<Bus> mBuses;
    std::int32_t mFilterChannels = 0;

    std::vector<Steinberg::Vst::AudioBusBuffers> mBuffers;
    std::vector<float*> mPointers;
    std::vector<float> mSpare; ///< what the channels that the filter doesn't show read or write
};

inline void VST3BusBuffers::Point(float* const* channels, std::int32_t offset) noexcept {
    // Everything anew for each slice: a plug-in can write to all of it, and what it wrote must not be followed.
    float** pointers = mPointers.data();
    Bus const* bus = mBuses.data();
    for (Steinberg::Vst::AudioBusBuffers& buffers : mBuffers) {
        buffers.numChannels = bus->pluginChannels;
        buffers.channelBuffers32 = pointers;
        for (float** const end = pointers + bus->filterChannels; pointers != end; ++pointers)
            *pointers = *channels++ + offset;
        for (float** const end = pointers + bus->spareChannels; pointers != end; ++pointers)
            *pointers = mSpare.data();
        ++bus;
    }
}

inline void VST3BusBuffers::SetSilence(ChannelFlags silent) noexcept {
    if (!mSpare.empty() || mFilterChannels > kFlagBits)
        return SetSilenceSlowly(silent);
    Bus const* bus = mBuses.data();
    for (Steinberg::Vst::AudioBusBuffers& buffers : mBuffers) {
        buffers.silenceFlags = bus->filterBits != 0 ? silent.GetBits() >> bus->firstChannel & bus->filterBits : 0;
        ++bus;
    }
}

inline void VST3BusBuffers::ClearSilence() noexcept {
    for (Steinberg::Vst::AudioBusBuffers& buffers : mBuffers)
        buffers.silenceFlags = 0;
}

inline ChannelFlags VST3BusBuffers::GetSilence() const noexcept {
    if (mFilterChannels > kFlagBits)
        return GetSilenceSlowly();
    std::uint64_t flags = 0;
    Bus const* bus = mBuses.data();
    for (Steinberg::Vst::AudioBusBuffers const& buffers : mBuffers) {
        // A plug-in that sets more bits than it has channels must not silence the next bus.
        if (bus->filterBits != 0)
            flags |= (buffers.silenceFlags & bus->filterBits) << bus->firstChannel;
        ++bus;
    }
    return ChannelFlags(flags);
}

} // namespace vynaudiofilterhost::vst3
