#include "vynaudiofilterhost/AudioFilterParameterInfo.h"

namespace vynaudiofilterhost {

AudioFilterParameterInfo::AudioFilterParameterInfo(vyncore::UString const& name, vyncore::UString const& label,
                                                   AudioFilterParameterInfoUnit unit)
    : mName(name), mLabel(label), mUnit(unit) {}

AudioFilterParameterInfo::~AudioFilterParameterInfo() = default;

bool AudioFilterParameterInfo::CanRamp() const {
    return false;
}

bool AudioFilterParameterInfo::CanBeAutomated() const {
    return true;
}

bool AudioFilterParameterInfo::SupportsStringForArbitraryValues() const {
    return true;
}

int AudioFilterParameterInfo::GetStepCount() const {
    return 0;
}

float AudioFilterParameterInfo::GetLoBound() const {
    return FromNormalized(0.0f);
}

float AudioFilterParameterInfo::GetHiBound() const {
    return FromNormalized(1.0f);
}

float AudioFilterParameterInfo::GetDisplayStep() const {
    return 0.01f;
}

bool AudioFilterParameterInfo::SupportsDisplayValueToParameter() const {
    return false;
}

} // namespace vynaudiofilterhost
