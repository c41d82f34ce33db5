#pragma once

#include "vynaudiofilterhost/AudioFilterParameterInfo.h"
#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"

#include <cstdint>

namespace vynaudiofilterhost::vst {

/// One parameter of an effect. Name, label, range and steps are read once; everything else is asked of the effect, so
/// that only as long as its filter lives does it answer sensibly.
class VSTParameterInfo final : public AudioFilterParameterInfo, private VSTDispatcherBase {
public:
    /// An effect that is null is refused (vyncore::config::ThrowError).
    /// [main-thread]
    VSTParameterInfo(AEffect* effect, int index);

    float ToNormalized(float displayValue) const override;
    float FromNormalized(float value) const override;
    bool CanRamp() const override;
    bool CanBeAutomated() const override;
    bool SupportsStringForArbitraryValues() const override;
    /// The text of the parameter's present value, whatever the argument.
    vyncore::UString GetParameterString(float value) const override;
    int GetStepCount() const override;

    /// From here on the effect, which is going, isn't asked any more.
    /// [main-thread]
    void Disconnect() noexcept { mConnected = false; }

private:
    void ReadRange();

    std::int32_t const mIndex;
    float mMinimum = 0.0f; ///< display value of normalized 0
    float mScale = 1.0f;   ///< normalized units per display unit
    std::int32_t mStepCount = 0;
    bool mConnected = true;
};

} // namespace vynaudiofilterhost::vst
