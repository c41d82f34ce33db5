#pragma once

#include "vynaudiofilterhost/AudioFilterParameterInfo.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <cstdint>

namespace vynaudiofilterhost {

/// A parameter whose display value runs over a range, evenly or logarithmically. Held through boost::intrusive_ptr by
/// whoever asked for it; the filter makes it and may change its bounds.
///
/// 1. Evenly, the display value goes from the low bound to the high bound; these differ.
/// 2. Logarithmically, it goes from the low bound, which is above 0, to low * exp(high): the high bound is an exponent
///    and not 0. With 20 and 6.9 the range ends near 20,000.
/// 3. Bounds that break these rules may give values that are no numbers or infinite, and do no other harm.
class VYN_API GenericParameterInfo : public AudioFilterParameterInfo {
public:
    /// A parameter that can't be automated starts out as not shown to the user.
    /// @param index             of the parameter; for subclasses
    /// @param minWholeDigits    zeros go in front of a shorter number
    /// @param maxDecimalDigits  for subclasses: how large a value is decides alone how many decimals its text has
    /// [main-thread]
    GenericParameterInfo(vyncore::UString const& name, vyncore::UString const& label, AudioFilterParameterInfoUnit unit,
                         int index, float loBound, float hiBound, bool canBeAutomated, bool isLogarithmic,
                         std::uint64_t minWholeDigits, std::uint64_t maxDecimalDigits);
    ~GenericParameterInfo() override;

    /// [main-thread]
    float ToNormalized(float displayValue) const override;
    /// [main-thread]
    float FromNormalized(float value) const override;
    /// [main-thread]
    bool CanBeAutomated() const override { return mCanBeAutomated; }

    /// A decimal number with the fewer decimals the larger it is; a whole number, of which the decimals are cut off and
    /// which ends where an int does; the localised "On" from 0.5 on and "Off" below. What is no number shows as "nan",
    /// as 0 and as "Off". Empty for a unit that isn't known.
    /// [main-thread]
    vyncore::UString GetParameterString(float value) const override;

    /// The bounds as they were given, the exponent included.
    /// [main-thread]
    float GetLoBound() const override { return mLoBound; }
    /// [main-thread]
    float GetHiBound() const override { return mHiBound; }
    /// [main-thread]
    void SetLoBound(float bound) noexcept { mLoBound = bound; }
    /// [main-thread]
    void SetHiBound(float bound) noexcept { mHiBound = bound; }

protected:
    /// [main-thread]
    int GetIndex() const noexcept { return mIndex; }
    /// [main-thread]
    std::uint64_t GetMinWholeDigits() const noexcept { return mMinWholeDigits; }
    /// [main-thread]
    std::uint64_t GetMaxDecimalDigits() const noexcept { return mMaxDecimalDigits; }
    /// [main-thread]
    void SetMinWholeDigits(std::uint64_t digits) noexcept { mMinWholeDigits = digits; }
    /// [main-thread]
    void SetMaxDecimalDigits(std::uint64_t digits) noexcept { mMaxDecimalDigits = digits; }

private:
    vyncore::UString DecimalText(float displayValue) const;

    std::int32_t const mIndex;
    float mLoBound;
    float mHiBound;
    bool const mCanBeAutomated;
    bool const mLogarithmic;
    std::uint64_t mMinWholeDigits;
    std::uint64_t mMaxDecimalDigits;
};

} // namespace vynaudiofilterhost
