#include "vynaudiofilterhost/AudioFilterProxy.h"

#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/GenericParameterInfo.h"
#include "vynaudiofilterhost/PluginCounts.h"

#include <cstddef>

namespace vynaudiofilterhost {

using vyncore::UString;

AudioFilterProxy::AudioFilterProxy(UString const& uniqueID, UString const& displayName, unsigned int parameterCount,
                                   bool usesChunkData)
    : AudioFilter(uniqueID, displayName), mUsesChunkData(usesChunkData) {
    int const count = PlausibleCount(static_cast<int>(parameterCount), kMaxParameters);
    for (int index = 0; index < count; ++index)
        AddParameter(0.0f, kParameterUnitNone, false);
}

AudioFilterProxy::AudioFilterProxy(boost::intrusive_ptr<AudioFilter> const& filter)
    : AudioFilter(filter ? filter->GetID() : UString(), filter ? filter->GetDisplayName() : UString()) {
    if (filter)
        TakeOver(*filter);
}

AudioFilterProxy::~AudioFilterProxy() = default;

// The information works on the normalized value itself: what the plug-in showed in its place nobody knows any more.
void AudioFilterProxy::AddParameter(float value, AudioFilterParameterInfoUnit unit, bool canBeAutomated) {
    constexpr bool kLogarithmic = false;
    int const index = static_cast<int>(mParameterInfos.size());
    mParameterInfos.emplace_back(
        new GenericParameterInfo(UString(), UString(), unit, index, 0.0f, 1.0f, canBeAutomated, kLogarithmic, 1, 6));
    mParameterValues.push_back(value);
}

void AudioFilterProxy::TakeOver(AudioFilter& filter) {
    mUsesChunkData = filter.DoPresetsUseChunkData();
    AddInputBuses(filter.GetInputBuses());
    AddOutputBuses(filter.GetOutputBuses());
    filter.SaveSettings(*mZombiePreset);
    AudioFilter::SetSampleRate(filter.GetSampleRate());
    AudioFilter::SetBlockSize(filter.GetBlockSize());
    int const count = PlausibleCount(filter.GetParameterCount(), kMaxParameters);
    for (int index = 0; index < count; ++index) {
        float const value = filter.GetParameter(index);
        auto const info = filter.GetParameterInfo(index);
        AddParameter(value, info ? info->GetUnit() : kParameterUnitNone, info && info->CanBeAutomated());
    }
    SetSideChainTargetBus(filter.GetSideChainTargetBus());
    SetUseChannelMap(filter.GetUseChannelMap());
    for (Direction const direction : {kDirectionInput, kDirectionOutput})
        SetChannelMap(filter.GetChannelMap(direction), direction);
    SetPresetNameAndDirtyState(filter.GetPresetNameAndDirtyState());
}

boost::intrusive_ptr<AudioFilter> AudioFilterProxy::CreateAudioFilterFromZombieState() const {
    auto filter = utility::CreateAudioFilter(GetID());
    if (!filter)
        return nullptr;
    filter->SetSampleRate(GetSampleRate());
    filter->SetBlockSize(GetBlockSize());
    filter->RequestBusConfiguration(GetInputBuses(), GetOutputBuses());
    filter->LoadSettings(*mZombiePreset);
    filter->SetUseChannelMap(GetUseChannelMap());
    for (Direction const direction : {kDirectionInput, kDirectionOutput})
        filter->SetChannelMap(GetChannelMap(direction), direction);
    filter->SetSideChainTargetBus(GetSideChainTargetBus());
    filter->SetPresetNameAndDirtyState(GetPresetNameAndDirtyState());
    return filter;
}

bool AudioFilterProxy::HasParameter(int index) const noexcept {
    return index >= 0 && static_cast<std::size_t>(index) < mParameterValues.size();
}

void AudioFilterProxy::SetParameterDisplayName(int index, UString const& name) {
    if (HasParameter(index))
        mParameterInfos[static_cast<std::size_t>(index)]->SetName(name);
}

bool AudioFilterProxy::IsProxy() const {
    return true;
}

int AudioFilterProxy::GetParameterCount() const {
    return static_cast<int>(mParameterValues.size());
}

float AudioFilterProxy::GetParameter(int index) const {
    return HasParameter(index) ? mParameterValues[static_cast<std::size_t>(index)] : 0.0f;
}

boost::intrusive_ptr<AudioFilterParameterInfo> AudioFilterProxy::GetParameterInfo(int index) {
    return HasParameter(index) ? mParameterInfos[static_cast<std::size_t>(index)] : nullptr;
}

void AudioFilterProxy::SetParameter(int index, float value) {
    if (HasParameter(index))
        mParameterValues[static_cast<std::size_t>(index)] = value;
    AudioFilter::SetParameter(index, value);
}

bool AudioFilterProxy::DoPresetsUseChunkData() const {
    return mUsesChunkData;
}

bool AudioFilterProxy::LoadSettings(PresetData const& preset) {
    mZombiePreset->SetDataFromExistingPreset(preset);
    return true;
}

void AudioFilterProxy::SaveSettings(PresetData& preset) const {
    preset.SetDataFromExistingPreset(*mZombiePreset);
}

} // namespace vynaudiofilterhost
