#include "vynhost/MainBuses.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <iterator>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

// The order of the channels is the one that both WAV files and plug-ins use.
AudioChannelLayout UsualLayout(int channels) {
    using enum AudioChannelDescription::Label;
    auto const make = [](std::initializer_list<AudioChannelDescription::Label> labels) {
        AudioChannelLayout layout;
        std::ranges::transform(labels, std::back_inserter(layout),
                               [](auto label) { return AudioChannelDescription(label); });
        return layout;
    };
    switch (channels) {
    case 1:
        return vynmediatypes::CreateMonoChannelLayout();
    case 2:
        return vynmediatypes::CreateStereoChannelLayout();
    case 3:
        return make({kLeft, kRight, kCenter});
    case 4:
        return make({kLeft, kRight, kLeftSurround, kRightSurround});
    case 5:
        return make({kLeft, kRight, kCenter, kLeftSurround, kRightSurround});
    case 6:
        return vynmediatypes::CreateSurround51ChannelLayout();
    case 8:
        return make({kLeft, kRight, kCenter, kLowFrequency, kLeftSurround, kRightSurround, kSideLeft, kSideRight});
    default:
        return {};
    }
}

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
        if (IsMain(bus))
            return {span.firstChannel, bus.GetChannelCount()};
        span.firstChannel += bus.GetChannelCount();
    }
    return {};
}

} // namespace

void RequestMainBuses(AudioFilter& filter, int channels) {
    AudioChannelLayout const layout = UsualLayout(channels);
    if (layout.empty())
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
    if (main.channels != 0 || filter.GetOutputBuses().empty())
        return main;
    return {0, filter.GetOutputBuses().front().GetChannelCount()};
}

} // namespace vynhost
