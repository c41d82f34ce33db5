#include "vynaudiofilterhost/VST3/src/VST3ParameterInfo.h"

#include "vynaudiofilterhost/PluginCounts.h"
#include "vynaudiofilterhost/VST3/src/VST3Text.h"

#include <cstring>
#include <limits>

namespace vynaudiofilterhost::vst3 {

using Steinberg::Vst::ParameterInfo;
using vyncore::UString;

ParameterInfo ReadParameterInfo(Steinberg::Vst::IEditController& controller, std::int32_t index) {
    ParameterInfo info;
    std::memset(&info, 0, sizeof info);
    controller.getParameterInfo(index, info);
    return info;
}

VST3ParameterInfo::VST3ParameterInfo(Steinberg::Vst::IEditController* controller, VST3ParameterFacts const& facts)
    : AudioFilterParameterInfo(UString(facts.title), UString(facts.label), kParameterUnitNone),
      mController(Query<Steinberg::Vst::IEditController>(controller)),
      mParameterID(facts.id),
      mParameterIndex(facts.place),
      mFlags(facts.flags),
      mStepCount(PlausibleCount(facts.stepCount, std::numeric_limits<std::int32_t>::max())) {
    SetExposed(CanBeAutomated());
}

void VST3ParameterInfo::ReadTitle() {
    if (!mController)
        return;
    ParameterInfo const info = ReadParameterInfo(*mController.Get(), mParameterIndex);
    SetName(UString(TextOf(info.title)));
    SetLabel(UString(TextOf(info.units)));
}

float VST3ParameterInfo::ToNormalized(float displayValue) const {
    return mController ? static_cast<float>(mController->plainParamToNormalized(mParameterID, displayValue)) : 0.0f;
}

float VST3ParameterInfo::FromNormalized(float value) const {
    return mController ? static_cast<float>(mController->normalizedParamToPlain(mParameterID, value)) : 0.0f;
}

bool VST3ParameterInfo::CanRamp() const {
    return true;
}

bool VST3ParameterInfo::CanBeAutomated() const {
    return (mFlags & ParameterInfo::kCanAutomate) != 0;
}

bool VST3ParameterInfo::SupportsStringForArbitraryValues() const {
    return true;
}

UString VST3ParameterInfo::GetParameterString(float value) const {
    Steinberg::Vst::String128 text{};
    if (mController)
        mController->getParamStringByValue(mParameterID, value, text);
    return UString(TextOf(text));
}

int VST3ParameterInfo::GetStepCount() const {
    return mStepCount;
}

} // namespace vynaudiofilterhost::vst3
