#include "vynaudiofilterhost/VST/src/VSTParameterInfo.h"

#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vyncore/config/ThrowError.h"

namespace vynaudiofilterhost::vst {

using vyncore::UString;

namespace {

/// What the effect says of a parameter, with room for one that says too much.
class ParameterProperties {
public:
    ParameterProperties(AEffect* effect, std::int32_t index) {
        mKnown = DispatchTo(effect, effGetParameterProperties, index, 0, &mRecord, 0.0f) != 0;
    }

    bool IsKnown() const noexcept { return mKnown; }
    VstParameterProperties const& Get() const noexcept { return mRecord.properties; }
    bool Has(VstParameterFlags flag) const noexcept { return mKnown && (Get().flags & flag) != 0; }

private:
    struct {
        VstParameterProperties properties;
        unsigned char overrun[128];
    } mRecord{};
    bool mKnown = false;
};

UString ReadText(AEffect* effect, EffectOpcode opcode, std::int32_t index) {
    ParameterText text;
    DispatchTo(effect, opcode, index, 0, text.GetBuffer(), 0.0f);
    return text.GetAsUTF8();
}

UString ReadLabel(AEffect* effect, std::int32_t index) {
    ParameterProperties const properties(effect, index);
    if (!properties.IsKnown())
        return ReadText(effect, effGetParamLabel, index);
    auto const& label = properties.Get().label;
    return vyncore::string::UTF8to16(FieldText(label, sizeof label));
}

} // namespace

// The label first, as effects are used to it.
VSTParameterInfo::VSTParameterInfo(AEffect* effect, int index) : VSTDispatcherBase(effect), mIndex(index) {
    if (!effect)
        vyncore::config::ThrowError("$$$/vyncore/utility/Error/Contract/InputContractViolation="
                                    "An input contract violation has occurred!",
                                    "inAEffect");
    SetLabel(ReadLabel(effect, index));
    SetName(ReadText(effect, effGetParamName, index));
    ReadRange();
}

void VSTParameterInfo::ReadRange() {
    ParameterProperties const properties(GetEffect(), mIndex);
    VstParameterProperties const& stated = properties.Get();
    float const range =
        static_cast<float>(static_cast<double>(stated.maxInteger) - static_cast<double>(stated.minInteger));
    if (properties.Has(kVstParameterUsesIntegerMinMax) && range != 0.0f) {
        mMinimum = static_cast<float>(stated.minInteger);
        mScale = 1.0f / range;
    }
    if (properties.Has(kVstParameterUsesIntStep))
        mStepCount = stated.stepInteger < 0 ? 0 : stated.stepInteger;
    else if (properties.Has(kVstParameterIsSwitch))
        mStepCount = 1;
}

float VSTParameterInfo::ToNormalized(float displayValue) const {
    return (displayValue - mMinimum) * mScale;
}

float VSTParameterInfo::FromNormalized(float value) const {
    return value / mScale + mMinimum;
}

bool VSTParameterInfo::CanRamp() const {
    return mConnected && ParameterProperties(GetEffect(), mIndex).Has(kVstParameterCanRamp);
}

bool VSTParameterInfo::CanBeAutomated() const {
    return mConnected && Dispatch(effCanBeAutomated, mIndex, 0, nullptr, 0.0f) != 0;
}

bool VSTParameterInfo::SupportsStringForArbitraryValues() const {
    return false;
}

UString VSTParameterInfo::GetParameterString(float) const {
    return mConnected ? ReadText(GetEffect(), effGetParamDisplay, mIndex) : UString();
}

int VSTParameterInfo::GetStepCount() const {
    return mStepCount;
}

} // namespace vynaudiofilterhost::vst
