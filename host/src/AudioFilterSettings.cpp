#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/presets/PresetList.h"
#include "vyncore/proplist/PropList.h"

#include <exception>
#include <list>

namespace vynaudiofilterhost {

namespace {

struct CountOnLeaving {
    AudioFilter& filter;

    ~CountOnLeaving() { filter.BumpParameterDirtyCount(); }
};

// Whatever a plug-in or a listener throws on the way, the load has ended and may have changed something.
template <class Load>
bool LoadInBrackets(AudioFilter& filter, Load const& load) {
    filter.StartLoadingSettings();
    CountOnLeaving const count{filter};
    std::exception_ptr failure;
    bool loaded = false;
    try {
        loaded = load();
    } catch (...) {
        failure = std::current_exception();
    }
    filter.FinishLoadingSettings(true);
    if (failure)
        std::rethrow_exception(failure);
    return loaded;
}

// A plug-in that throws leaves the preset as it was.
void SaveChunkInto(AudioFilter const& filter, PresetData& preset) {
    vyncore::proplist::PropList former = *preset.GetRawData();
    preset.Clear();
    try {
        filter.SaveChunkData(preset);
    } catch (...) {
        boost::intrusive_ptr<PresetData> const asItWas(new PresetData(former));
        preset.SetDataFromExistingPreset(*asItWas);
        throw;
    }
}

// Asking for a parameter or a preset's name does not change the filter; the operations are not const for the sake of
// subclasses that make what they return on demand.
AudioFilter& Asked(AudioFilter const& filter) {
    return const_cast<AudioFilter&>(filter);
}

} // namespace

float AudioFilter::GetCurrentPresetVersion() const {
    return 1.0f;
}

bool AudioFilter::DoPresetsUseChunkData() const {
    return false;
}

void AudioFilter::GetFactoryDefaultPresets(PresetList& list) const {
    list.Clear();
    int const count = GetNumFactoryPresets();
    for (int index = 0; index < count; ++index) {
        UString const name = Asked(*this).GetFactoryPresetName(index);
        auto const preset = name.empty() ? nullptr : list.AppendPreset(name);
        if (!preset)
            continue;
        preset->SetVersion(GetCurrentPresetVersion());
        preset->SetPresetType(PresetData::kPresetTypeFactoryPreset);
        preset->SetFactoryPresetName(name);
    }
}

int AudioFilter::GetNumFactoryPresets() const {
    return 0;
}

AudioFilter::UString AudioFilter::GetFactoryPresetName(int) {
    return UString();
}

void AudioFilter::SetFactoryPreset(int) {}

bool AudioFilter::LoadSettings(PresetData const& preset) {
    return LoadInBrackets(*this, [&] {
        if (!ValidatePresetVersion(preset.GetVersion()))
            return false;
        switch (preset.GetPresetType()) {
        case PresetData::kPresetTypeParamList:
            return !DoPresetsUseChunkData() && LoadParams(preset);
        case PresetData::kPresetTypeChunkData:
            if (!DoPresetsUseChunkData())
                return false;
            LoadChunkData(preset);
            return true;
        case PresetData::kPresetTypeFactoryPreset:
            return LoadFactoryPreset(preset);
        case PresetData::kPresetTypeCustomData:
            return LoadCustomData(preset);
        }
        return false;
    });
}

void AudioFilter::SaveSettings(PresetData& preset) const {
    if (DoPresetsUseChunkData()) {
        SaveChunkInto(*this, preset);
        return;
    }
    // Asked before anything is stored: what is there must not go for what can't be had.
    std::list<float> values;
    SaveParams(values);
    preset.Clear();
    preset.SetVersion(GetCurrentPresetVersion());
    preset.SetPresetType(PresetData::kPresetTypeParamList);
    preset.SetParamList(values);
}

bool AudioFilter::LoadChunkData(PresetData const&) {
    return false;
}

bool AudioFilter::SaveChunkData(PresetData& preset) const {
    preset.SetVersion(GetCurrentPresetVersion());
    preset.SetPresetType(PresetData::kPresetTypeChunkData);
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

bool AudioFilter::LoadParams(PresetData const& preset) {
    std::list<float> values;
    preset.GetParamList(values);
    if (!ValidateParamCount(static_cast<int>(values.size())))
        return false;
    int index = 0;
    for (float const value : values)
        SetParameterAutomated(index++, value);
    return true;
}

void AudioFilter::SaveParams(std::list<float>& values) const {
    values.clear();
    int const count = GetParameterCount();
    for (int index = 0; index < count; ++index) {
        auto const info = Asked(*this).GetParameterInfo(index);
        values.push_back(info && !info->IsPersisted() ? 0.0f : GetParameter(index));
    }
}

bool AudioFilter::LoadFactoryPreset(PresetData const& preset) {
    UString const name = preset.GetFactoryPresetName();
    int const stored = preset.GetFactoryIndex();
    int const count = GetNumFactoryPresets();
    // A stored number may be any: no plug-in is asked for what it doesn't have.
    if (stored >= 0 && stored < count && GetFactoryPresetName(stored) == name) {
        SetFactoryPreset(stored);
        return true;
    }
    bool found = false;
    for (int index = 0; index < count; ++index) {
        if (GetFactoryPresetName(index) != name)
            continue;
        SetFactoryPreset(index);
        found = true;
    }
    return found;
}

bool AudioFilter::ValidatePresetVersion(float version) const {
    return version == GetCurrentPresetVersion();
}

bool AudioFilter::ValidateParamCount(int count) const {
    return count == GetParameterCount();
}

} // namespace vynaudiofilterhost
