#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"

#include <cstring>

namespace vynaudiofilterhost::vst3 {

using Steinberg::int32;
using Steinberg::kResultOk;
using Steinberg::Vst::ProgramListInfo;
using Steinberg::Vst::UnitInfo;

bool VST3AudioFilter::DoPresetsUseChunkData() const {
    return true;
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
