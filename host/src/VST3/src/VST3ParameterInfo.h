#pragma once

#include "vynaudiofilterhost/AudioFilterParameterInfo.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <cstdint>

namespace vynaudiofilterhost::vst3 {

/// One parameter of an edit controller, which it asks for conversions and texts. It holds a reference on the
/// controller, but only as long as its filter lives does the controller answer sensibly. [main-thread]
class VST3ParameterInfo final : public AudioFilterParameterInfo {
public:
    /// @param parameterIndex  place in the controller's list
    VST3ParameterInfo(Steinberg::Vst::IEditController* controller, std::int32_t parameterIndex);

    /// The same, with what the controller has said of the parameter already.
    VST3ParameterInfo(Steinberg::Vst::IEditController* controller, std::int32_t parameterIndex,
                      Steinberg::Vst::ParameterInfo const& info);

    Steinberg::Vst::ParamID GetParameterID() const noexcept { return mParameterID; }

    /// Asks the controller for name and label anew.
    void ReadTitle();

    float ToNormalized(float displayValue) const override;
    float FromNormalized(float value) const override;
    bool CanRamp() const override;
    bool CanBeAutomated() const override;
    bool SupportsStringForArbitraryValues() const override;
    vyncore::UString GetParameterString(float value) const override;
    int GetStepCount() const override;

private:
    PluginPointer<Steinberg::Vst::IEditController> const mController;
    Steinberg::Vst::ParamID const mParameterID;
    std::int32_t const mParameterIndex;
    std::int32_t const mFlags;
    std::int32_t const mStepCount;
};

/// What the controller says of a parameter; all 0 where it says nothing. [main-thread]
Steinberg::Vst::ParameterInfo ReadParameterInfo(Steinberg::Vst::IEditController& controller, std::int32_t index);

} // namespace vynaudiofilterhost::vst3
