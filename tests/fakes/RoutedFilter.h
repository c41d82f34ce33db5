#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <cstddef>
#include <vector>

namespace vyntest {

inline vynmediatypes::AudioBusDescription Bus(int channels) {
    return {u"Bus", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(channels)), {}};
}

/// A map with these values; -1 is an unconnected entry.
inline vynmediatypes::ChannelMap MapOf(std::vector<int> const& values) {
    vynmediatypes::ChannelMap map;
    for (std::size_t entry = 0; entry < values.size(); ++entry) {
        map.AddChannel({}, -1);
        if (values[entry] >= 0)
            vynaudiofilterhost::utility::SetMapping(map, static_cast<int>(entry), values[entry]);
    }
    return map;
}

inline std::vector<int> ValuesOf(vynmediatypes::ChannelMap const& map) {
    std::vector<int> values;
    for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry)
        values.push_back(map[entry]);
    return values;
}

/// A filter that keeps the first sample of each of its inputs and writes 10 + n to its output n.
class RoutedFilter : public vynaudiofilterhost::AudioFilter {
public:
    RoutedFilter(Buses const& inputs, Buses const& outputs) : AudioFilter(u"routed", u"Routed") {
        AddInputBuses(inputs);
        AddOutputBuses(outputs);
        read.resize(static_cast<std::size_t>(GetNumberOfInputChannels()));
        mOutputs = static_cast<std::size_t>(GetNumberOfOutputChannels());
    }

    void Process(float** in, float** out, int numSamples, vynaudiofilterhost::ChannelFlags flags,
                 vynaudiofilterhost::ChannelFlags& silent) override {
        inFlags = flags;
        for (std::size_t channel = 0; channel < read.size(); ++channel)
            read[channel] = spoilsInputs ? in[channel][0] = 99.0f : in[channel][0];
        for (std::size_t channel = 0; channel < mOutputs; ++channel)
            for (int i = 0; i < numSamples; ++i)
                out[channel][i] = static_cast<float>(10 + channel);
        silent = outFlags;
    }

    int GetInitialDelay() const override { return throwsLatency ? throw 1 : latency; }

    std::vector<float> read;
    vynaudiofilterhost::ChannelFlags inFlags;
    vynaudiofilterhost::ChannelFlags outFlags;
    int latency = 0;
    bool throwsLatency = false;
    bool spoilsInputs = false;

private:
    std::size_t mOutputs = 0;
};

} // namespace vyntest
