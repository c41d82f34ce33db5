#pragma once

#include "vynaudiofilterhost/AudioFilterParameterInfo.h"
#include "vynaudiofilterhost/IParameterIdentity.h"
#include "vynaudiofilterhost/VST3/src/PluginPointer.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <cstdint>
#include <string_view>

namespace vynaudiofilterhost::vst3 {

/// What an edit controller has said of a parameter. The texts are somebody else's. A plain record.
struct VST3ParameterFacts {
    Steinberg::Vst::ParamID id;
    std::int32_t place; ///< in the controller's list
    std::int32_t flags; ///< ParameterInfo's
    std::int32_t stepCount;
    std::u16string_view title;
    std::u16string_view label;
};

/// One parameter of an edit controller, which it asks for conversions and texts. It holds a reference on the
/// controller, but only as long as its filter lives does the controller answer sensibly. [main-thread]
class VST3ParameterInfo final : public AudioFilterParameterInfo, public IParameterIdentity {
public:
    VST3ParameterInfo(Steinberg::Vst::IEditController* controller, VST3ParameterFacts const& facts);

    Steinberg::Vst::ParamID GetParameterID() const override { return mParameterID; }

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
