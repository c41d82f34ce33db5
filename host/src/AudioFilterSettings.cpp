#include "vynaudiofilterhost/AudioFilter.h"

namespace vynaudiofilterhost {

float AudioFilter::GetCurrentPresetVersion() const {
    return 1.0f;
}

bool AudioFilter::DoPresetsUseChunkData() const {
    return false;
}

void AudioFilter::GetFactoryDefaultPresets(PresetList&) const {}

int AudioFilter::GetNumFactoryPresets() const {
    return 0;
}

AudioFilter::UString AudioFilter::GetFactoryPresetName(int) {
    return UString();
}

void AudioFilter::SetFactoryPreset(int) {}

bool AudioFilter::LoadSettings(PresetData const&) {
    StartLoadingSettings();
    FinishLoadingSettings(true);
    BumpParameterDirtyCount();
    return false;
}

void AudioFilter::SaveSettings(PresetData&) const {}

bool AudioFilter::LoadChunkData(PresetData const&) {
    return false;
}

bool AudioFilter::SaveChunkData(PresetData&) const {
    return false;
}

bool AudioFilter::LoadCustomData(PresetData const&) {
    return false;
}

bool AudioFilter::ArePresetsSafeForPlayback() const {
    return true;
}

void AudioFilter::StartLoadingSettings() {
    mLoadingSettings = true;
}

void AudioFilter::FinishLoadingSettings(bool) {
    mLoadingSettings = false;
    mPresetChanged();
}

bool AudioFilter::LoadParams(PresetData const&) {
    return false;
}

void AudioFilter::SaveParams(std::list<float>& values) const {
    values.clear();
    int const count = GetParameterCount();
    for (int index = 0; index < count; ++index) {
        // Asking for the information does not change the filter; the operation is not const for the sake of subclasses
        // that make it on demand.
        auto const info = const_cast<AudioFilter*>(this)->GetParameterInfo(index);
        values.push_back(info && !info->IsPersisted() ? 0.0f : GetParameter(index));
    }
}

bool AudioFilter::LoadFactoryPreset(PresetData const&) {
    return false;
}

bool AudioFilter::ValidatePresetVersion(float version) const {
    return version == GetCurrentPresetVersion();
}

bool AudioFilter::ValidateParamCount(int count) const {
    return count == GetParameterCount();
}

} // namespace vynaudiofilterhost
