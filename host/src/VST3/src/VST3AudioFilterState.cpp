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

// A plug-in may keep a reference past the call.
using StreamPointer = OwnedObject<VST3MemoryStream>;

// A part of a state is none.
template <class Object>
void ReadState(Object& object, VST3MemoryStream& stream) {
    if (object.getState(&stream) != kResultOk || stream.HasOverflowed())
        stream.SetSize(0);
}

bool IsUsable(VST3States const& states) {
    return states.whole && (!states.component.empty() || !states.controller.empty());
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
    ReadState(*mComponent, *component);
    if (mController)
        ReadState(*mController, *controller);
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
    bool const taken = mComponent->setState(stream.get()) == kResultOk;
    stream->seek(0, Steinberg::IBStream::kIBSeekSet, nullptr);
    if (!mController)
        return taken;
    // A controller that makes nothing of the component's state says that it lacks the operation.
    Steinberg::tresult const heard = mController->setComponentState(stream.get());
    return taken && (heard == kResultOk || heard == Steinberg::kNotImplemented);
}

bool VST3AudioFilter::SetControllerState(ChunkBytes state) {
    OwnedObject<VST3MemoryStream> const stream(new VST3MemoryStream(std::move(state), 0));
    return mController->setState(stream.get()) == kResultOk;
}

std::vector<AudioFilter::UString> VST3AudioFilter::GetPresetFileExtensions() const {
    return {u"vstpreset"};
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

bool VST3AudioFilter::WritePresetFile(PresetData const& preset, UString const&, Bytes& bytes, UString& reason) const {
    ChunkBytes chunk;
    if (preset.GetPresetType() == PresetData::kPresetTypeChunkData)
        preset.GetChunkData(chunk);
    VST3PresetContent const content{PresetClassID(mClassID), SplitStateChunk(chunk)};
    if (!IsUsable(content.states)) {
        reason = u"the preset holds no state that is whole";
        return false;
    }
    bytes = MakeVST3PresetFile(content);
    return true;
}

bool VST3AudioFilter::IsStateWhole(PresetData const& preset) const {
    ChunkBytes chunk;
    if (preset.GetPresetType() != PresetData::kPresetTypeChunkData ||
        preset.GetVersion() != GetCurrentPresetVersion() || !preset.GetChunkData(chunk))
        return false;
    VST3States const states = SplitStateChunk(chunk);
    return states.whole && (!states.component.empty() || (mController && !states.controller.empty()));
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
    if (index < 0 || index >= PlausibleCount(list.programCount, kMaxPrograms))
        return UString();
    Steinberg::Vst::String128 name{};
    if (mUnitInfo->getProgramName(list.id, index, name) != kResultOk)
        return UString();
    return UString(TextOf(name));
}

std::int32_t VST3AudioFilter::ReadProgramSteps() const {
    if (!mController || mProgramChangeParameterID == kNoProgramChange)
        return 0;
    Steinberg::Vst::ParameterInfo info;
    std::memset(&info, 0, sizeof info);
    return mController->getParameterInfo(mProgramChangeParameterIndex, info) == kResultOk ? info.stepCount : 0;
}

bool VST3AudioFilter::CanSelectFactoryPreset(int index) const {
    std::int32_t const steps = ReadProgramSteps();
    return steps > 0 && index >= 0 && index <= steps;
}

void VST3AudioFilter::SetFactoryPreset(int index) {
    std::int32_t const steps = ReadProgramSteps();
    if (steps < 1 || index < 0 || index > steps)
        return;
    double const value = static_cast<double>(index) / steps;
    mController->setParamNormalized(mProgramChangeParameterID, value);
    mInputPoints.PushPoint(mProgramChangeParameterID, value, 0);
}

} // namespace vynaudiofilterhost::vst3
