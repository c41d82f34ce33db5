#include "vynhost/PluginFacts.h"

#include "vynhost/MainBuses.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <stdexcept>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

constexpr int kBlockSize = 512;

BusFacts GetBuses(AudioFilter const& filter) {
    BusFacts buses;
    filter.GetBusConfiguration(buses.inputs, buses.outputs);
    return buses;
}

// Some plug-ins know their latency suspended or running alone, and say 0 in the other state.
int FindLatency(AudioFilter& filter) {
    int const suspended = filter.GetInitialDelay();
    filter.Resume();
    int const running = filter.GetInitialDelay();
    filter.Suspend();
    return std::max(suspended, running);
}

LayoutAnswer Ask(AudioFilter& filter, char const* layout, BusFacts const& restored) {
    RequestMainBuses(filter, LayoutOfName(layout));
    LayoutAnswer answer{layout, GetBuses(filter)};
    filter.RequestBusConfiguration(restored.inputs, restored.outputs);
    return answer;
}

} // namespace

PluginFacts GatherFacts(PluginSelection const& plugin) {
    PluginFacts facts;
    // Whoever makes a descriptor leaves the buses changed: that filter is used for nothing else.
    facts.descriptor = plugin.CreateFilter()->CreateFilterDescriptor(plugin.GetLocator(), false);
    if (!facts.descriptor)
        throw std::runtime_error("the plug-in tells nothing of itself");
    auto const filter = plugin.CreateFilter();
    filter->SetSampleRate(kFactsSampleRate);
    filter->SetBlockSize(kBlockSize);
    facts.buses = GetBuses(*filter);
    facts.latency = FindLatency(*filter);
    facts.tail = filter->GetTail();
    facts.parameters = filter->GetParameterCount();
    facts.presets = filter->GetNumFactoryPresets();
    facts.chunk = filter->DoPresetsUseChunkData();
    for (char const* const layout : {"mono", "stereo", "5.1"})
        facts.answers.push_back(Ask(*filter, layout, facts.buses));
    return facts;
}

} // namespace vynhost
