#include "vynhost/FilterConnections.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynmediatypes::AudioBusDescription;

namespace {

bool AreAlike(AudioFilter::Buses const& some, AudioFilter::Buses const& others) {
    return std::ranges::equal(some, others, [](AudioBusDescription const& one, AudioBusDescription const& other) {
        return one.GetType() == other.GetType() && one.GetLayout() == other.GetLayout();
    });
}

} // namespace

FilterConnections::FilterConnections(AudioFilter const& filter)
    : mInputs(filter.GetInputBuses()),
      mOutputs(filter.GetOutputBuses()),
      mInputMap(filter.GetChannelMap(AudioFilter::kDirectionInput)),
      mOutputMap(filter.GetChannelMap(AudioFilter::kDirectionOutput)),
      mTrack(filter.GetMainTargetBus()) {}

bool FilterConnections::HasBusesOf(FilterConnections const& other) const {
    return AreAlike(mInputs, other.mInputs) && AreAlike(mOutputs, other.mOutputs);
}

bool FilterConnections::HasMapsOf(FilterConnections const& other) const {
    return mInputMap.IsMappingEqual(other.mInputMap) && mOutputMap.IsMappingEqual(other.mOutputMap);
}

// Asking a plug-in for what it has may make it set itself up anew.
void FilterConnections::Restore(AudioFilter& filter) const {
    if (!HasBusesOf(FilterConnections(filter)))
        filter.RequestBusConfiguration(mInputs, mOutputs);
    filter.SetMainTargetBus(mTrack);
    filter.SetChannelMap(mInputMap, AudioFilter::kDirectionInput);
    filter.SetChannelMap(mOutputMap, AudioFilter::kDirectionOutput);
}

} // namespace vynhost
