#pragma once

#include "vynmediatypes/AudioBusDescription.h"
#include "vynmediatypes/ChannelMap.h"

#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// How a filter is connected with its track: its buses, its channel maps and the track, as they were once. A value.
class FilterConnections {
public:
    /// As they are now.
    /// [main-thread]
    explicit FilterConnections(vynaudiofilterhost::AudioFilter const& filter);

    /// Whether both have the same buses, whatever these are called.
    /// [main-thread]
    bool HasBusesOf(FilterConnections const& other) const;

    /// Whether both connect the same channels.
    /// [main-thread]
    bool HasMapsOf(FilterConnections const& other) const;

    /// Gives them back to the filter. Throws what the plug-in throws.
    /// [main-thread & suspended]
    void Restore(vynaudiofilterhost::AudioFilter& filter) const;

private:
    using Buses = std::vector<vynmediatypes::AudioBusDescription>;

    Buses mInputs;
    Buses mOutputs;
    vynmediatypes::ChannelMap mInputMap;
    vynmediatypes::ChannelMap mOutputMap;
    vynmediatypes::AudioBusDescription mTrack;
};

} // namespace vynhost
