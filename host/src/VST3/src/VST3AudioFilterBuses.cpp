#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vynaudiofilterhost/VST3/src/VST3SpeakerArrangement.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using Steinberg::Vst::BusDirection;
using Steinberg::Vst::BusInfo;
using Steinberg::Vst::SpeakerArrangement;

namespace {

constexpr int32 kMaxChannelsOfBus = 4096;

} // namespace

std::int32_t VST3AudioFilter::CountBuses(Steinberg::Vst::MediaType type, BusDirection direction) const {
    return PlausibleCount(mComponent->getBusCount(type, direction), kMaxBuses);
}

void VST3AudioFilter::BuildIOConfiguration() {
    ClearBusConfiguration();
    mInputBusBuffers.Clear();
    mOutputBusBuffers.Clear();
    mInputEvents.reset();
    mOutputEvents.reset();
    if (CountBuses(Steinberg::Vst::kEvent, Steinberg::Vst::kInput) > 0)
        mInputEvents.reset(new VST3EventList(kEventListSize));
    if (CountBuses(Steinberg::Vst::kEvent, Steinberg::Vst::kOutput) > 0)
        mOutputEvents.reset(new VST3EventList(kEventListSize));
    if (!mCreated)
        return;

    // The filter's buses and the plug-in's buffers change together: a plug-in that throws leaves both without buses.
    Buses inputs;
    VST3BusBuffers inputBuffers;
    ReadBuses(Steinberg::Vst::kInput, inputs, inputBuffers);
    Buses outputs;
    VST3BusBuffers outputBuffers;
    ReadBuses(Steinberg::Vst::kOutput, outputs, outputBuffers);
    AddInputBuses(inputs);
    AddOutputBuses(outputs);
    mInputBusBuffers = std::move(inputBuffers);
    mOutputBusBuffers = std::move(outputBuffers);
    ActivateBuses(Steinberg::Vst::kInput, Steinberg::Vst::kMain);
    ActivateBuses(Steinberg::Vst::kOutput, Steinberg::Vst::kMain);
}

void VST3AudioFilter::ReadBuses(BusDirection direction, Buses& buses, VST3BusBuffers& buffers) const {
    int32 const count = CountBuses(Steinberg::Vst::kAudio, direction);
    for (int32 index = 0; index < count; ++index) {
        BusInfo info{};
        bool const known = mComponent->getBusInfo(Steinberg::Vst::kAudio, direction, index, info) == kResultOk;
        if (!known)
            info = BusInfo{};
        SpeakerArrangement arrangement = 0;
        std::size_t const shown = buses.size();
        if (mProcessor->getBusArrangement(direction, index, arrangement) == kResultOk)
            AddBusForArrangement(arrangement, info.busType, UString(TextOf(info.name)), mSDKVersion, buses);
        else
            arrangement = 0;

        // A bus that the filter can't show keeps its place: the plug-in counts its buses on.
        int32 const stated = PlausibleCount(info.channelCount, kMaxChannelsOfBus);
        int32 const counted = arrangement != 0 ? std::popcount(arrangement) : stated;
        int32 const visible = buses.size() > shown ? buses.back().GetChannelCount() : 0;
        buffers.AddBus(counted, std::max(0, stated - counted), visible);
    }
}

void VST3AudioFilter::RequestIOConfiguration(Layouts const& inputLayouts, Layouts const& outputLayouts) {
    if (!mCreated)
        return;
    std::vector<SpeakerArrangement> inputs;
    std::vector<SpeakerArrangement> outputs;
    ArrangementsFromLayouts(inputLayouts, inputs);
    ArrangementsFromLayouts(outputLayouts, outputs);
    if (inputs.empty() || outputs.empty() || std::max(inputs.size(), outputs.size()) > kMaxBuses)
        return;
    // The answer is what the arrangements read back say, whatever the plug-in returns here.
    mProcessor->setBusArrangements(inputs.data(), static_cast<int32>(inputs.size()), outputs.data(),
                                   static_cast<int32>(outputs.size()));
    BuildIOConfiguration();
}

} // namespace vynaudiofilterhost::vst3
