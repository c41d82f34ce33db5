#pragma once

#include "vynhost/NameLookup.h"

#include "vynaudiofilterhost/AudioFilterParameterInfo.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vynhost {

/// A value of a parameter. A plain record.
struct ParameterValue {
    float normalized = 0.0f;            ///< 0..1
    std::optional<double> display = {}; ///< as it was given, when it was given as a display value
    bool betweenSteps = false;          ///< as it was given; what it is now is the nearest step
};

/// The values of one parameter, as a user writes them. It asks the parameter's information, and must go before the
/// filter does.
class ParameterScale {
public:
    /// @param info  not null
    /// Throws what the plug-in throws.
    /// [main-thread]
    explicit ParameterScale(boost::intrusive_ptr<vynaudiofilterhost::AudioFilterParameterInfo> info);

    /// Reads one of the texts of a parameter that has steps, or else a display value, or with "%" behind it a
    /// normalized one of 0 to 100; the first and the second also with the parameter's label behind it. What lies
    /// between steps becomes the nearest. Throws CommandError (wrong usage), with what may be written, for anything
    /// else; a number just beyond the range, as rounding gives it, is taken.
    /// [main-thread]
    ParameterValue Read(std::string const& text) const;

    /// The normalized value of a display value, clamped to 0..1. Throws std::runtime_error when the plug-in gives no
    /// number for it.
    /// [main-thread]
    float Normalize(double display) const;

    /// Whether the parameter knows no values between its steps.
    /// [main-thread]
    bool HasSteps() const;

    /// Whether the plug-in says that it takes values while it runs.
    /// [main-thread]
    bool CanBeAutomated() const;

    /// [main-thread]
    std::string GetName() const;

    /// The text of a normalized value, or its display value, when the plug-in gives no text for any value.
    /// [main-thread]
    std::string Describe(float normalized) const;

private:
    std::optional<ParameterValue> ReadWithoutLabel(std::string_view text) const;
    std::optional<ParameterValue> ReadNumeric(std::string_view text) const;
    std::optional<ParameterValue> ReadDisplayValue(double display) const;
    void SnapToStep(ParameterValue& value) const;
    std::vector<int> FindSteps(std::string_view text) const;
    std::vector<std::string> MakeTexts() const;
    double GetRounding() const;
    [[noreturn]] void Refuse(std::string const& text) const;

    boost::intrusive_ptr<vynaudiofilterhost::AudioFilterParameterInfo> mInfo;
    double mLow;
    double mHigh;
    mutable std::optional<NameLookup> mTexts; ///< by step; made when first looked at
};

} // namespace vynhost
