#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <cstdint>

namespace vynaudiofilterhost {

/// How the values of a parameter show: on or off, as whole numbers, or, for all others here, as decimal numbers. A
/// number that is not here shows as nothing.
/// The label beside the value is a text of the parameter's own and doesn't follow from this.
enum AudioFilterParameterInfoUnit : std::int32_t {
    kParameterUnitNone = 0,
    kParameterUnitDecibels = 1,
    kParameterUnitHertz = 2,
    kParameterUnitOnOff = 3,
    kParameterUnitPercent = 4,
    kParameterUnitMilliseconds = 5,
    kParameterUnitWholeNumber = 6,
};

/// Describes one parameter of a filter to the outside: its name, the unit it shows in, how a normalized value (0..1)
/// turns into a display value and back, and how it prints. Held through boost::intrusive_ptr; the filter hands it out
/// and may make a new one each time. It never holds or changes the parameter's value.
class VYN_API AudioFilterParameterInfo : public vyncore::utility::RefCountedObject {
public:
    AudioFilterParameterInfo(AudioFilterParameterInfo const&) = delete;
    AudioFilterParameterInfo& operator=(AudioFilterParameterInfo const&) = delete;
    ~AudioFilterParameterInfo() override;

    /// The normalized value of a display value, not clamped.
    /// [main-thread]
    virtual float ToNormalized(float displayValue) const = 0;

    /// The display value of a normalized value, not clamped.
    /// [main-thread]
    virtual float FromNormalized(float value) const = 0;

    /// Whether the value may move smoothly between two points instead of jumping.
    /// [main-thread]
    virtual bool CanRamp() const;

    /// [main-thread]
    virtual bool CanBeAutomated() const;

    /// Whether GetParameterString answers for any value, not only for the parameter's present one.
    /// [main-thread]
    virtual bool SupportsStringForArbitraryValues() const;

    /// The text of a normalized value, without the label.
    /// [main-thread]
    virtual vyncore::UString GetParameterString(float value) const = 0;

    /// The number of steps between the lowest and the highest value; 0 for a continuous parameter.
    /// [main-thread]
    virtual int GetStepCount() const;

    /// The display value at normalized 0, unless a subclass says otherwise.
    /// [main-thread]
    virtual float GetLoBound() const;

    /// The display value at normalized 1, unless a subclass says otherwise.
    /// [main-thread]
    virtual float GetHiBound() const;

    /// How far one step of a control moves the display value.
    /// [main-thread]
    virtual float GetDisplayStep() const;

    /// Whether a value typed in as a display value can be turned into a parameter value.
    /// [main-thread]
    virtual bool SupportsDisplayValueToParameter() const;

    /// [main-thread]
    vyncore::UString GetName() const { return mName; }
    /// [main-thread]
    void SetName(vyncore::UString const& name) { mName = name; }

    /// The unit text that stands behind a value, such as "dB".
    /// [main-thread]
    vyncore::UString GetLabel() const { return mLabel; }
    /// [main-thread]
    void SetLabel(vyncore::UString const& label) { mLabel = label; }

    /// [main-thread]
    AudioFilterParameterInfoUnit GetUnit() const noexcept { return mUnit; }
    /// [main-thread]
    void SetUnit(AudioFilterParameterInfoUnit unit) noexcept { mUnit = unit; }

    /// Whether the parameter is shown to the user; true until set.
    /// [main-thread]
    bool IsExposed() const noexcept { return mExposed; }
    /// [main-thread]
    void SetExposed(bool exposed) noexcept { mExposed = exposed; }

    /// Whether the value belongs in presets; true until set.
    /// [main-thread]
    bool IsPersisted() const noexcept { return mPersisted; }
    /// [main-thread]
    void SetIsPersisted(bool persisted) noexcept { mPersisted = persisted; }

protected:
    /// No name, no label, no unit.
    AudioFilterParameterInfo() = default;
    AudioFilterParameterInfo(vyncore::UString const& name, vyncore::UString const& label,
                             AudioFilterParameterInfoUnit unit);

private:
    vyncore::UString mName;
    vyncore::UString mLabel;
    AudioFilterParameterInfoUnit mUnit = kParameterUnitNone;
    bool mExposed = true;
    bool mPersisted = true;
};

} // namespace vynaudiofilterhost
