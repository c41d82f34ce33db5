#include "vynaudiofilterhost/GenericParameterInfo.h"

#include "vyncore/config/Localizer.h"
#include "vyncore/strings/StringStreams.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vynaudiofilterhost {

using vyncore::UString;

namespace {

constexpr unsigned kMostWholeDigits = 31;

// Compared as floats, so that a tenth is a tenth; what is no number passes for a small one.
unsigned DecimalsFor(float magnitude) {
    if (magnitude > 100.0f)
        return 0;
    if (magnitude > 10.0f)
        return 1;
    if (magnitude > 1.0f)
        return 2;
    return magnitude > 0.1f ? 3 : 4;
}

int TruncatedToInt(float value) {
    using Limits = std::numeric_limits<int>;
    // The largest int is no float; what is one below it is an int.
    constexpr float kBeyond = -static_cast<float>(Limits::lowest());
    if (std::isnan(value))
        return 0;
    if (value >= kBeyond)
        return Limits::max();
    return value < -kBeyond ? Limits::lowest() : static_cast<int>(value);
}

UString WholeNumberText(float displayValue) {
    vyncore::oUTF16StringStream stream;
    stream << TruncatedToInt(displayValue);
    return stream.str();
}

UString SwitchText(bool on) {
    return vyncore::config::Localizer::Get().GetString(on ? "$$$/vynaudiofilterhost/ParameterInfo/On=On"
                                                          : "$$$/vynaudiofilterhost/ParameterInfo/Off=Off");
}

} // namespace

GenericParameterInfo::GenericParameterInfo(UString const& name, UString const& label, AudioFilterParameterInfoUnit unit,
                                           int index, float loBound, float hiBound, bool canBeAutomated,
                                           bool isLogarithmic, std::uint64_t minWholeDigits,
                                           std::uint64_t maxDecimalDigits)
    : AudioFilterParameterInfo(name, label, unit),
      mIndex(index),
      mLoBound(loBound),
      mHiBound(hiBound),
      mCanBeAutomated(canBeAutomated),
      mLogarithmic(isLogarithmic),
      mMinWholeDigits(minWholeDigits),
      mMaxDecimalDigits(maxDecimalDigits) {
    if (!canBeAutomated)
        SetExposed(false);
}

GenericParameterInfo::~GenericParameterInfo() = default;

float GenericParameterInfo::ToNormalized(float displayValue) const {
    if (mLogarithmic)
        return std::log(displayValue / mLoBound) / mHiBound;
    return (displayValue - mLoBound) / (mHiBound - mLoBound);
}

float GenericParameterInfo::FromNormalized(float value) const {
    if (mLogarithmic)
        return mLoBound * std::exp(mHiBound * value);
    return (mHiBound - mLoBound) * value + mLoBound;
}

UString GenericParameterInfo::GetParameterString(float value) const {
    switch (GetUnit()) {
    case kParameterUnitNone:
    case kParameterUnitDecibels:
    case kParameterUnitHertz:
    case kParameterUnitPercent:
    case kParameterUnitMilliseconds:
        return DecimalText(FromNormalized(value));
    case kParameterUnitOnOff:
        return SwitchText(value >= 0.5f);
    case kParameterUnitWholeNumber:
        return WholeNumberText(FromNormalized(value));
    }
    return UString();
}

UString GenericParameterInfo::DecimalText(float displayValue) const {
    auto const minWholeDigits = std::min<std::uint64_t>(mMinWholeDigits, std::numeric_limits<unsigned>::max());
    return vyncore::string::NumberToString(double{displayValue}, static_cast<unsigned>(minWholeDigits),
                                           DecimalsFor(std::abs(displayValue)), 0, kMostWholeDigits);
}

} // namespace vynaudiofilterhost
