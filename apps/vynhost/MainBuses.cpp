#include "vynhost/MainBuses.h"

#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

bool IsMain(AudioBusDescription const& bus) {
    return bus.GetType() == AudioBusDescription::kTypeMain;
}

void SetMainLayout(AudioFilter::Buses& buses, AudioChannelLayout const& layout) {
    auto const main = std::ranges::find_if(buses, IsMain);
    if (main != buses.end())
        main->SetLayout(layout);
}

BusSpan FindMain(AudioFilter::Buses const& buses) {
    BusSpan span;
    for (AudioBusDescription const& bus : buses) {
        ++span.bus;
        span.channels = bus.GetChannelCount();
        if (IsMain(bus))
            return span;
        span.firstChannel += bus.GetChannelCount();
    }
    return {};
}

} // namespace

void RequestMainBuses(AudioFilter& filter, AudioChannelLayout const& layout) {
    if (UsualLayout(static_cast<int>(layout.size())).empty())
        return;
    AudioFilter::Buses inputs;
    AudioFilter::Buses outputs;
    filter.GetBusConfiguration(inputs, outputs);
    SetMainLayout(inputs, layout);
    SetMainLayout(outputs, layout);
    filter.RequestBusConfiguration(inputs, outputs);
}

BusSpan FindMainInput(AudioFilter const& filter) {
    return FindMain(filter.GetInputBuses());
}

BusSpan FindMainOutput(AudioFilter const& filter) {
    BusSpan const main = FindMain(filter.GetOutputBuses());
    if (main.bus >= 0 || filter.GetOutputBuses().empty())
        return main;
    return {0, 0, filter.GetOutputBuses().front().GetChannelCount()};
}

} // namespace vynhost
