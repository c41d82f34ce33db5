#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vynaudiofilterhost {

using vynmediatypes::AudioBusDescription;
using vynmediatypes::AudioChannelLayout;

namespace {

AudioFilter::Layouts LayoutsOf(AudioFilter::Buses const& buses) {
    AudioFilter::Layouts layouts;
    layouts.reserve(buses.size());
    for (AudioBusDescription const& bus : buses)
        layouts.push_back(bus.GetLayout());
    return layouts;
}

} // namespace

void AudioFilter::AddInputBus(AudioBusDescription const& bus) {
    mInputBuses.push_back(bus);
}

void AudioFilter::AddOutputBus(AudioBusDescription const& bus) {
    mOutputBuses.push_back(bus);
}

void AudioFilter::AddInputBuses(Buses const& buses) {
    Buses added = buses; // they may be the filter's own
    std::move(added.begin(), added.end(), std::back_inserter(mInputBuses));
}

void AudioFilter::AddOutputBuses(Buses const& buses) {
    Buses added = buses;
    std::move(added.begin(), added.end(), std::back_inserter(mOutputBuses));
}

void AudioFilter::ClearInputBusConfiguration() {
    mInputBuses.clear();
}

void AudioFilter::ClearOutputBusConfiguration() {
    mOutputBuses.clear();
}

void AudioFilter::ClearBusConfiguration() {
    ClearInputBusConfiguration();
    ClearOutputBusConfiguration();
}

void AudioFilter::GetBusConfiguration(Buses& inputs, Buses& outputs) const {
    inputs = mInputBuses;
    outputs = mOutputBuses;
}

int AudioFilter::GetNumberOfInputChannels() const {
    return utility::CountChannels(mInputBuses);
}

int AudioFilter::GetNumberOfOutputChannels() const {
    return utility::CountChannels(mOutputBuses);
}

void AudioFilter::DoRequestIOConfiguration(Buses const& inputs, Buses const& outputs) {
    RequestIOConfiguration(LayoutsOf(inputs), LayoutsOf(outputs));
}

void AudioFilter::RequestIOConfiguration(Layouts const&, Layouts const&) {}

void AudioFilter::RequestBusConfiguration(Buses const& inputs, Buses const& outputs) {
    Buses const formerInputs = mInputBuses;
    Buses const formerOutputs = mOutputBuses;
    DoRequestIOConfiguration(inputs, outputs);
    if (GetNumberOfInputChannels() == 0 && GetNumberOfOutputChannels() == 0)
        DoRequestIOConfiguration(formerInputs, formerOutputs);
    if (formerInputs != mInputBuses || formerOutputs != mOutputBuses)
        mBusConfigurationChanged();
}

bool AudioFilter::IsChannelFormatSupported(AudioChannelLayout const& layout) {
    std::size_t const wanted = layout.size(); // the layout may be one of the buses that the request replaces
    RequestIOConfiguration({layout}, {layout});
    return !mInputBuses.empty() && mOutputBuses.size() == 1 && !mInputBuses.front().GetLayout().empty() &&
           mOutputBuses.front().GetLayout().size() == wanted;
}

bool AudioFilter::CanUseSideChaining() const {
    return mInputBuses.size() > 1;
}

void AudioFilter::SendBusConfigurationChanged() {
    mBusConfigurationChanged();
}

void AudioFilter::SetMainTargetBus(AudioBusDescription const& bus) {
    mMainTargetBus = bus;
    mTargetFormatChanged();
}

void AudioFilter::SetChannelMapTargetChannelLayout(AudioChannelLayout const& layout) {
    mMainTargetBus.SetLayout(layout);
    mTargetFormatChanged();
}

void AudioFilter::SetSideChainTargetBus(AudioBusDescription const& bus) {
    if (bus == mSideChainTargetBus)
        return;
    bool const shrinks = bus.GetChannelCount() < mSideChainTargetBus.GetChannelCount();
    if (shrinks)
        DisconnectLostSideChain(mSideChainTargetBus.GetChannelCount(), bus.GetChannelCount());
    mSideChainTargetBus = bus;
    // Any other entry that leads to a lost channel must not be rendered either.
    if (shrinks && !IsSuspended())
        UpdateChannelMapArraysForRendering();
    mTargetFormatChanged();
}

std::uint64_t AudioFilter::GetSideChainTargetBusChannelCount() const {
    return mSideChainTargetBus.GetLayout().size();
}

} // namespace vynaudiofilterhost
