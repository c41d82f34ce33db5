#include "vynhost/ParameterScale.h"

#include "vynhost/CommandError.h"
#include "vynhost/FoldedText.h"
#include "vynhost/ListText.h"
#include "vynhost/NumberText.h"

#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilterParameterInfo;
using vyncore::string::UTF16to8;

namespace {

constexpr int kMostTexts = 1000;

// What is copied from a table of six digits may lie this far beyond a bound.
constexpr double kRounding = 1e-5;

} // namespace

// The bounds are those of the values: GetHiBound may be a figure of another kind for a logarithmic parameter.
ParameterScale::ParameterScale(boost::intrusive_ptr<AudioFilterParameterInfo> info)
    : mInfo(std::move(info)),
      mLow(WidenNumber(mInfo->FromNormalized(0.0f))),
      mHigh(WidenNumber(mInfo->FromNormalized(1.0f))) {}

bool ParameterScale::HasSteps() const {
    return mInfo->GetStepCount() > 0;
}

bool ParameterScale::CanBeAutomated() const {
    return mInfo->CanBeAutomated();
}

std::string ParameterScale::GetName() const {
    return UTF16to8(mInfo->GetName());
}

std::string ParameterScale::Describe(float normalized) const {
    std::string text;
    if (mInfo->SupportsStringForArbitraryValues())
        text = UTF16to8(mInfo->GetParameterString(normalized));
    return text.empty() ? WriteNumber(WidenNumber(mInfo->FromNormalized(normalized))) : text;
}

// A percentage stays one for a parameter whose label is "%": it is what it is for all others.
ParameterValue ParameterScale::Read(std::string const& text) const {
    std::optional<ParameterValue> value = ReadWithoutLabel(text);
    std::string const label = Fold(UTF16to8(mInfo->GetLabel()));
    std::string const folded = Fold(text);
    if (!value && !label.empty() && folded.ends_with(label))
        value = ReadWithoutLabel(std::string_view(folded).substr(0, folded.size() - label.size()));
    if (!value)
        Refuse(text);
    return *value;
}

// What a plug-in shows for a step is what a user means by it, even where it looks like another step's number.
std::optional<ParameterValue> ParameterScale::ReadWithoutLabel(std::string_view text) const {
    std::vector<int> const steps = FindSteps(text);
    if (steps.size() == 1)
        return ParameterValue{static_cast<float>(steps.front()) / static_cast<float>(mInfo->GetStepCount())};
    std::optional<ParameterValue> value = ReadNumeric(TrimBlanks(text));
    if (!value && steps.size() > 1)
        throw CommandError::WrongUsage('"' + GetName() + "\" shows several values as \"" + std::string(text) +
                                       "\", choose one by its number");
    if (value)
        SnapToStep(*value);
    return value;
}

std::optional<ParameterValue> ParameterScale::ReadNumeric(std::string_view text) const {
    if (auto const display = ReadNumber(text))
        return ReadDisplayValue(*display);
    if (!text.ends_with('%'))
        return std::nullopt;
    auto const percent = ReadNumber(text.substr(0, text.size() - 1));
    if (!percent || *percent < -kRounding || *percent > 100.0 + kRounding)
        return std::nullopt;
    return ParameterValue{static_cast<float>(std::clamp(*percent / 100.0, 0.0, 1.0))};
}

double ParameterScale::GetRounding() const {
    return kRounding * std::max(std::abs(mLow), std::abs(mHigh));
}

std::optional<ParameterValue> ParameterScale::ReadDisplayValue(double display) const {
    auto const [least, most] = std::minmax(mLow, mHigh);
    // A range that isn't finite holds nothing against a value; what Normalize says of it counts then.
    if (display < least - GetRounding() || display > most + GetRounding())
        return std::nullopt;
    return ParameterValue{Normalize(display), display};
}

// Plug-ins differ in what they make of a value between steps, and some have rounded a display value already.
void ParameterScale::SnapToStep(ParameterValue& value) const {
    double const steps = mInfo->GetStepCount();
    if (steps < 1.0)
        return;
    constexpr double kNearStep = 0.01;
    double const place = double{value.normalized} * steps;
    double const nearest = std::round(place);
    value.normalized = static_cast<float>(nearest / steps);
    if (value.display)
        value.betweenSteps =
            std::abs(WidenNumber(mInfo->FromNormalized(value.normalized)) - *value.display) > GetRounding();
    else
        value.betweenSteps = std::abs(place - nearest) > std::max(kNearStep, kRounding * steps);
}

float ParameterScale::Normalize(double display) const {
    float const normalized = mInfo->ToNormalized(static_cast<float>(display));
    if (!std::isfinite(normalized))
        throw std::runtime_error("the plug-in turns " + WriteNumber(display) + " into no value of its parameter \"" +
                                 GetName() + '"');
    return std::clamp(normalized, 0.0f, 1.0f);
}

std::vector<int> ParameterScale::FindSteps(std::string_view text) const {
    if (!mTexts)
        mTexts.emplace("value", MakeTexts());
    return TrimBlanks(text).empty() ? std::vector<int>() : mTexts->FindByName(std::string(text));
}

std::vector<std::string> ParameterScale::MakeTexts() const {
    std::vector<std::string> texts;
    int const steps = mInfo->GetStepCount();
    if (steps < 1 || steps > kMostTexts || !mInfo->SupportsStringForArbitraryValues())
        return texts;
    for (int step = 0; step <= steps; ++step) {
        float const value = static_cast<float>(step) / static_cast<float>(steps);
        texts.emplace_back(UTF16to8(mInfo->GetParameterString(value)));
    }
    return texts;
}

void ParameterScale::Refuse(std::string const& text) const {
    std::string choice =
        "it goes from " + WriteNumber(mLow) + " to " + WriteNumber(mHigh) + ", or from 0% to 100% of that range";
    std::vector<std::string> quoted;
    for (std::string const& one : mTexts->GetNames())
        quoted.push_back('"' + one + '"');
    if (!quoted.empty())
        choice += ", or is one of " + ListTexts(quoted);
    throw CommandError::WrongUsage('"' + GetName() + "\" cannot be \"" + text + "\": " + choice);
}

} // namespace vynhost
