#pragma once

#include "vynmediatypes/AudioChannelLayout.h"

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Where the main bus of one direction lies among all channels of a filter.
struct BusSpan {
    int bus = -1; ///< its number; negative when there is no such bus
    int firstChannel = 0;
    int channels = 0;

    /// [any-thread]
    bool Has(int channel) const noexcept { return channel >= firstChannel && channel < firstChannel + channels; }
};

/// Asks the filter for a main input and a main output of this layout, its other buses as they are. What it has
/// afterwards is its own answer. Numbers of channels that have no usual layout are not asked for.
/// [main-thread & suspended]
void RequestMainBuses(vynaudiofilterhost::AudioFilter& filter, vynmediatypes::AudioChannelLayout const& layout);

/// The first input bus of the main type; none on an instrument.
/// [main-thread]
BusSpan FindMainInput(vynaudiofilterhost::AudioFilter const& filter);

/// The first output bus of the main type, else the first of all.
/// [main-thread]
BusSpan FindMainOutput(vynaudiofilterhost::AudioFilter const& filter);

} // namespace vynhost
