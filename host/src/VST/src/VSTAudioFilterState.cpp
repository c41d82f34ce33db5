#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/presets/PresetList.h"
#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vynaudiofilterhost/VST/src/VSTPresetFile.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <cmath>
#include <list>
#include <utility>

namespace vynaudiofilterhost::vst {

using vyncore::proplist::PropList;
using vyncore::string::AsciiToUTF16;

namespace {

constexpr std::int32_t kProgram = 1; ///< of chunks: the present program, not the bank

bool AllFinite(std::list<float> const& values) {
    return std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); });
}

} // namespace

bool VSTAudioFilter::DoPresetsUseChunkData() const {
    return GetEffect() && (GetEffect()->flags & effFlagsProgramChunks) != 0;
}

int VSTAudioFilter::GetNumFactoryPresets() const {
    return GetEffect() ? PlausibleCount(GetEffect()->numPrograms, kMaxPrograms) : 0;
}

AudioFilter::UString VSTAudioFilter::GetFactoryPresetName(int index) {
    if (index < 0 || index >= GetNumFactoryPresets())
        return UString();
    // The last byte is a 0 whatever the effect has written.
    EffectText<kProgramNameBytes - 1> name;
    Dispatch(effGetProgramNameIndexed, index, 0, name.GetBuffer(), 0.0f);
    return name.GetAsUTF8();
}

void VSTAudioFilter::GetFactoryDefaultPresets(PresetList& list) const {
    list.Clear();
    int const count = GetNumFactoryPresets();
    for (int index = 0; index < count; ++index) {
        UString const name = const_cast<VSTAudioFilter&>(*this).GetFactoryPresetName(index);
        auto const preset = name.empty() ? nullptr : list.AppendPreset(name);
        if (!preset)
            continue;
        if (index == 0) {
            SaveSettings(*preset);
            continue;
        }
        preset->SetVersion(GetCurrentPresetVersion());
        preset->SetPresetType(PresetData::kPresetTypeFactoryPreset);
        preset->SetFactoryPresetName(name);
        preset->SetFactoryIndex(index);
    }
}

bool VSTAudioFilter::CanSelectFactoryPreset(int index) const {
    return index >= 0 && index < GetNumFactoryPresets();
}

// The state of an effect is always that of its program 0: it is left there, with what the chosen program holds.
void VSTAudioFilter::SetFactoryPreset(int index) {
    if (index <= 0 || index >= GetNumFactoryPresets())
        return;
    PropList list;
    boost::intrusive_ptr<PresetData> const preset(new PresetData(list));
    SnapshotFactoryPreset(index, *preset);
    LoadSettings(*preset);
}

void VSTAudioFilter::SnapshotFactoryPreset(int index, PresetData& preset) const {
    struct BackToFirst {
        VSTAudioFilter const& filter;

        ~BackToFirst() { filter.Dispatch(effSetProgram, 0, 0, nullptr, 0.0f); }
    } const back{*this};
    Dispatch(effSetProgram, 0, index, nullptr, 0.0f);
    SaveSettings(preset);
}

bool VSTAudioFilter::SaveChunkData(PresetData& preset) const {
    if (!DoPresetsUseChunkData())
        return false;
    void* data = nullptr;
    std::intptr_t const size = Dispatch(effGetChunk, kProgram, 0, &data, 0.0f);
    bool const whole = data && size > 0 && size <= kMaxVSTChunk;
    preset.SetChunkData(static_cast<unsigned char const*>(data), whole ? static_cast<unsigned long long>(size) : 0);
    preset.SetVersion(GetCurrentPresetVersion());
    preset.SetPresetType(PresetData::kPresetTypeChunkData);
    return true;
}

bool VSTAudioFilter::LoadChunkData(PresetData const& preset) {
    if (!DoPresetsUseChunkData())
        return false;
    PresetData::Bytes chunk;
    if (!preset.GetChunkData(chunk))
        return false;
    auto const size = static_cast<std::intptr_t>(chunk.size());
    // Effects look at the pointer, also of a chunk that is empty.
    chunk.reserve(1);
    Dispatch(effSetChunk, kProgram, size, chunk.data(), 0.0f);
    return true;
}

std::vector<AudioFilter::UString> VSTAudioFilter::GetPresetFileExtensions() const {
    return {u"fxp", u"fxb"};
}

bool VSTAudioFilter::IsPresetFile(std::span<unsigned char const> bytes) const {
    return IsVSTPresetFile(bytes);
}

bool VSTAudioFilter::ReadPresetFile(std::span<unsigned char const> bytes, PresetData& preset, UString& reason) const {
    VSTPresetContent content;
    if (char const* const fault = ParseVSTPresetFile(bytes, content)) {
        reason = AsciiToUTF16(fault);
        return false;
    }
    if (!GetEffect() || content.uniqueID != GetEffect()->uniqueID) {
        reason = u"it is a preset of another plug-in";
        return false;
    }
    if (content.isChunk != DoPresetsUseChunkData()) {
        reason = content.isChunk ? u"it holds a chunk, and the plug-in takes parameters"
                                 : u"it holds parameters, and the plug-in takes a chunk";
        return false;
    }
    if (!content.isChunk && content.parameters.size() != static_cast<std::size_t>(GetParameterCount())) {
        reason = u"it holds another number of parameters than the plug-in has";
        return false;
    }
    preset.Clear();
    preset.SetVersion(GetCurrentPresetVersion());
    preset.SetPresetType(content.isChunk ? PresetData::kPresetTypeChunkData : PresetData::kPresetTypeParamList);
    if (content.isChunk)
        preset.SetChunkData(content.chunk.data(), content.chunk.size());
    else
        preset.SetParamList({content.parameters.begin(), content.parameters.end()});
    return true;
}

bool VSTAudioFilter::WritePresetFile(PresetData const& preset, UString const& extension, Bytes& bytes,
                                     UString& reason) const {
    if (!GetEffect() || !IsStateWhole(preset)) {
        reason = u"the preset holds no state that is whole";
        return false;
    }
    PresetData::Bytes chunk;
    std::list<float> values;
    VSTPresetContent content;
    content.uniqueID = GetEffect()->uniqueID;
    content.effectVersion = static_cast<std::uint32_t>(Dispatch(effGetVstVersion, 0, 0, nullptr, 0.0f));
    content.name = vyncore::string::UTF16to8(GetDisplayName());
    content.isChunk = DoPresetsUseChunkData();
    content.parameterCount = static_cast<std::uint32_t>(GetParameterCount());
    if (content.isChunk) {
        preset.GetChunkData(chunk);
        content.chunk = chunk;
    } else {
        preset.GetParamList(values);
        content.parameters.assign(values.begin(), values.end());
    }
    char const* const fault = extension == u"fxb" ? MakeVSTBankFile(content, bytes) : MakeVSTPresetFile(content, bytes);
    if (fault)
        reason = AsciiToUTF16(fault);
    return !fault;
}

bool VSTAudioFilter::IsStateWhole(PresetData const& preset) const {
    if (preset.GetVersion() != GetCurrentPresetVersion())
        return false;
    if (DoPresetsUseChunkData()) {
        PresetData::Bytes chunk;
        return preset.GetPresetType() == PresetData::kPresetTypeChunkData && preset.GetChunkData(chunk) &&
               !chunk.empty();
    }
    std::list<float> values;
    preset.GetParamList(values);
    return preset.GetPresetType() == PresetData::kPresetTypeParamList &&
           values.size() == static_cast<std::size_t>(GetParameterCount()) && AllFinite(values);
}

} // namespace vynaudiofilterhost::vst
