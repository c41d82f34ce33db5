#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vynaudiofilterhost/VST3/src/VST3MemoryStream.h"
#include "vynaudiofilterhost/VST3/src/VST3PresetFile.h"
#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"
#include "vyncore/strings/StringUtils.h"

#include <cstring>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using Steinberg::Vst::ProgramListInfo;
using Steinberg::Vst::UnitInfo;

namespace {

// On the heap, because a plug-in may keep a reference past the call.
using StreamPointer = PluginPointer<VST3MemoryStream>;

// Half a state is none.
template <class Object>
void ReadState(Object& object, VST3MemoryStream& stream) {
    if (object.getState(&stream) != kResultOk)
        stream.SetSize(0);
}

// Plug-ins without anything of their own to restore say that they lack the operation.
bool IsTaken(Steinberg::tresult result) {
    return result == kResultOk || result == Steinberg::kNotImplemented;
}

} // namespace

bool VST3AudioFilter::DoPresetsUseChunkData() const {
    return true;
}

bool VST3AudioFilter::SaveChunkData(PresetData& preset) const {
    if (!mComponent)
        return false;
    // The component writes behind the header of what will be the chunk, which is about as large as the last one.
    StreamPointer const component(new VST3MemoryStream(ChunkBytes(kStateChunkHeader), kStateChunkHeader));
    StreamPointer const controller(new VST3MemoryStream);
    component->Reserve(mChunkSize);
    ReadState(*mComponent, *component.Get());
    if (mController)
        ReadState(*mController, *controller.Get());
    if (component->GetSize() == 0 && controller->GetSize() == 0)
        return true;
    mChunkSize = kStateChunkHeader + component->GetSize() + controller->GetSize();
    SetChunk(preset, JoinStateChunk(component->TakeBytes(), controller->GetBytes()));
    return true;
}

void VST3AudioFilter::SetChunk(PresetData& preset, StateBytes chunk) const {
    preset.SetChunkData(chunk.data(), chunk.size());
    preset.SetVersion(GetCurrentPresetVersion());
    preset.SetPresetType(PresetData::kPresetTypeChunkData);
}

bool VST3AudioFilter::LoadChunkData(PresetData const& preset) {
    ChunkBytes chunk;
    if (!mComponent || !preset.GetChunkData(chunk))
        return false;
    VST3States const states = SplitStateChunk(chunk);
    mChunkTaken = false; // also when the plug-in throws
    ChunkBytes controllerState(states.controller.begin(), states.controller.end());
    bool taken = true;
    if (std::size_t const size = states.component.size(); size != 0) {
        chunk.resize(kStateChunkHeader + size);
        taken = SetComponentState(std::move(chunk));
    }
    if (mController && !controllerState.empty())
        taken = SetControllerState(std::move(controllerState)) && taken;
    mChunkTaken = taken;
    return true;
}

// The controller hears of the component's state ahead of its own.
bool VST3AudioFilter::SetComponentState(ChunkBytes chunk) {
    StreamPointer const stream(new VST3MemoryStream(std::move(chunk), kStateChunkHeader));
    bool const taken = IsTaken(mComponent->setState(stream.Get()));
    stream->seek(0, Steinberg::IBStream::kIBSeekSet, nullptr);
    return (!mController || IsTaken(mController->setComponentState(stream.Get()))) && taken;
}

bool VST3AudioFilter::SetControllerState(ChunkBytes state) {
    StreamPointer const stream(new VST3MemoryStream(std::move(state), 0));
    return IsTaken(mController->setState(stream.Get()));
}

AudioFilter::UString VST3AudioFilter::GetPresetFileExtension() const {
    return u"vstpreset";
}

bool VST3AudioFilter::IsPresetFile(StateBytes bytes) const {
    return IsVST3PresetFile(bytes);
}

bool VST3AudioFilter::ReadPresetFile(StateBytes bytes, PresetData& preset, UString& reason) const {
    VST3PresetContent content;
    if (char const* const wrong = ParseVST3PresetFile(bytes, content)) {
        reason = vyncore::string::AsciiToUTF16(wrong);
        return false;
    }
    std::string const own = PresetClassID(mClassID);
    if (content.classID != own) {
        reason = vyncore::string::AsciiToUTF16("it is a preset of the plug-in class " + content.classID +
                                               ", and this is " + own);
        return false;
    }
    ChunkBytes component(kStateChunkHeader);
    component.insert(component.end(), content.states.component.begin(), content.states.component.end());
    preset.Clear();
    SetChunk(preset, JoinStateChunk(std::move(component), content.states.controller));
    return true;
}

bool VST3AudioFilter::WritePresetFile(PresetData const& preset, Bytes& bytes) const {
    ChunkBytes chunk;
    if (preset.GetPresetType() != PresetData::kPresetTypeChunkData || !preset.GetChunkData(chunk))
        return false;
    VST3PresetContent const content{PresetClassID(mClassID), SplitStateChunk(chunk)};
    if (content.states.whole)
        bytes = MakeVST3PresetFile(content);
    return content.states.whole;
}

bool VST3AudioFilter::IsChunkWhole(PresetData const& preset) const {
    ChunkBytes chunk;
    return preset.GetPresetType() == PresetData::kPresetTypeChunkData &&
           preset.GetVersion() == GetCurrentPresetVersion() && preset.GetChunkData(chunk) &&
           SplitStateChunk(chunk).whole;
}

int VST3AudioFilter::GetNumFactoryPresets() const {
    return mFactoryPresetCount;
}

std::int32_t VST3AudioFilter::ReadFactoryPresetCount() const {
    int32 const lists = mUnitInfo ? PlausibleCount(mUnitInfo->getProgramListCount(), kMaxUnits) : 0;
    UnitInfo root;
    if (lists < 1 || !FindRootUnit(root) || root.programListId == Steinberg::Vst::kNoProgramListId)
        return 0;
    for (int32 index = 0; index < lists; ++index) {
        ProgramListInfo list;
        std::memset(&list, 0, sizeof list);
        if (mUnitInfo->getProgramListInfo(index, list) == kResultOk && list.id == root.programListId)
            return PlausibleCount(list.programCount, kMaxPrograms);
    }
    return 0;
}

bool VST3AudioFilter::FindRootUnit(UnitInfo& unit) const {
    int32 const units = PlausibleCount(mUnitInfo->getUnitCount(), kMaxUnits);
    for (int32 index = 0; index < units; ++index) {
        std::memset(&unit, 0, sizeof unit);
        if (mUnitInfo->getUnitInfo(index, unit) == kResultOk && unit.id == Steinberg::Vst::kRootUnitId)
            return true;
    }
    return false;
}

AudioFilter::UString VST3AudioFilter::GetFactoryPresetName(int index) {
    ProgramListInfo list;
    std::memset(&list, 0, sizeof list);
    if (!mUnitInfo || mUnitInfo->getProgramListInfo(0, list) != kResultOk)
        return UString();
    Steinberg::Vst::String128 name{};
    if (mUnitInfo->getProgramName(list.id, index, name) != kResultOk)
        return UString();
    return UString(TextOf(name));
}

void VST3AudioFilter::SetFactoryPreset(int index) {
    if (!mController || mProgramChangeParameterID == kNoProgramChange)
        return;
    Steinberg::Vst::ParameterInfo info;
    std::memset(&info, 0, sizeof info);
    if (mController->getParameterInfo(mProgramChangeParameterIndex, info) != kResultOk)
        return;
    if (info.stepCount < 1 || index < 0 || index > info.stepCount)
        return;
    double const value = static_cast<double>(index) / info.stepCount;
    mController->setParamNormalized(mProgramChangeParameterID, value);
    mInputPoints.PushPoint(mProgramChangeParameterID, value, 0);
}

} // namespace vynaudiofilterhost::vst3
