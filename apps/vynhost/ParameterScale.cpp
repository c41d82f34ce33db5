#include "vynhost/ParameterScale.h"

#include "vynhost/CommandError.h"
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

std::string NameOf(AudioFilterParameterInfo const& info) {
    return UTF16to8(info.GetName());
}

} // namespace

// The bounds are those of the values: GetHiBound may be a figure of another kind for a logarithmic parameter.
ParameterScale::ParameterScale(boost::intrusive_ptr<AudioFilterParameterInfo> info)
    : mInfo(std::move(info)),
      mLow(WidenNumber(mInfo->FromNormalized(0.0f))),
      mHigh(WidenNumber(mInfo->FromNormalized(1.0f))) {}

bool ParameterScale::HasSteps() const {
    return mInfo->GetStepCount() > 0;
}

ParameterValue ParameterScale::Read(std::string const& text) const {
    std::string_view const trimmed = TrimBlanks(text);
    std::optional<ParameterValue> value;
    if (auto const display = ReadNumber(trimmed)) {
        value = ReadDisplayValue(*display);
    } else if (trimmed.ends_with('%')) {
        auto const percent = ReadNumber(trimmed.substr(0, trimmed.size() - 1));
        if (percent && *percent >= -kRounding && *percent <= 100.0 + kRounding)
            value = ParameterValue{static_cast<float>(std::clamp(*percent / 100.0, 0.0, 1.0)), std::nullopt};
    }
    if (!value)
        value = ReadText(text);
    if (!value)
        Refuse(text);
    return *value;
}

std::optional<ParameterValue> ParameterScale::ReadDisplayValue(double display) const {
    auto const [least, most] = std::minmax(mLow, mHigh);
    double const rounding = kRounding * std::max(std::abs(least), std::abs(most));
    // A range that isn't finite holds nothing against a value; what Normalize says of it counts then.
    if (display < least - rounding || display > most + rounding)
        return std::nullopt;
    return ParameterValue{Normalize(display), display};
}

float ParameterScale::Normalize(double display) const {
    float const normalized = mInfo->ToNormalized(static_cast<float>(display));
    if (!std::isfinite(normalized))
        throw std::runtime_error("the plug-in turns " + WriteNumber(display) + " into no value of its parameter \"" +
                                 NameOf(*mInfo) + '"');
    return std::clamp(normalized, 0.0f, 1.0f);
}

std::optional<ParameterValue> ParameterScale::ReadText(std::string const& text) const {
    if (!mTexts)
        mTexts.emplace("value", MakeTexts());
    std::vector<int> const steps = mTexts->FindByName(text);
    if (steps.size() > 1)
        throw CommandError::WrongUsage('"' + NameOf(*mInfo) + "\" shows several values as \"" + text +
                                       "\", choose one by its number");
    if (steps.empty())
        return std::nullopt;
    return ParameterValue{static_cast<float>(steps.front()) / static_cast<float>(mInfo->GetStepCount()), std::nullopt};
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
    constexpr std::size_t kMostListed = 20;
    std::string choice =
        "it goes from " + WriteNumber(mLow) + " to " + WriteNumber(mHigh) + ", or from 0% to 100% of that range";
    std::vector<std::string> const& texts = mTexts->GetNames();
    for (std::size_t i = 0; i < std::min(texts.size(), kMostListed); ++i)
        choice += (i == 0 ? ", or is one of \"" : ", \"") + texts[i] + '"';
    if (texts.size() > kMostListed)
        choice += " and " + std::to_string(texts.size() - kMostListed) + " more";
    throw CommandError::WrongUsage('"' + NameOf(*mInfo) + "\" cannot be \"" + text + "\": " + choice);
}

} // namespace vynhost
