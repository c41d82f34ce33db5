#pragma once

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Where the main bus of one direction lies among all channels of a filter.
struct BusSpan {
    int firstChannel = 0;
    int channels = 0; ///< 0 when there is no such bus
};

/// Asks the filter for a main input and a main output of so many channels, its other buses as they are. What it has
/// afterwards is its own answer. Counts that have no usual layout are not asked for.
/// [main-thread & suspended]
void RequestMainBuses(vynaudiofilterhost::AudioFilter& filter, int channels);

/// The first input bus of the main type; none on an instrument.
/// [main-thread]
BusSpan FindMainInput(vynaudiofilterhost::AudioFilter const& filter);

/// The first output bus of the main type, else the first of all.
/// [main-thread]
BusSpan FindMainOutput(vynaudiofilterhost::AudioFilter const& filter);

} // namespace vynhost
