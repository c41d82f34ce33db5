#include "vynhost/AutomationCurve.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vynhost {

AutomationCurve::AutomationCurve(std::vector<AutomationPoint> points, bool jumps, Normalize normalize)
    : mPoints(std::move(points)), mJumps(jumps), mNormalize(std::move(normalize)) {}

AutomationCurve::Place AutomationCurve::FindBehind(std::int64_t sample) const {
    return std::ranges::upper_bound(mPoints, sample, {}, &AutomationPoint::sample);
}

bool AutomationCurve::MovesTo(Place next) const {
    return !mJumps && next != mPoints.begin() && next != mPoints.end() &&
           std::prev(next)->value.normalized != next->value.normalized;
}

std::optional<float> AutomationCurve::GetValue(std::int64_t sample) const {
    Place const next = FindBehind(sample);
    if (next == mPoints.begin())
        return std::nullopt;
    AutomationPoint const& from = *std::prev(next);
    if (!MovesTo(next) || from.sample == sample)
        return from.value.normalized;
    double const way = static_cast<double>(sample - from.sample) / static_cast<double>(next->sample - from.sample);
    if (from.value.display && next->value.display)
        return mNormalize(std::lerp(*from.value.display, *next->value.display, way));
    return static_cast<float>(std::lerp(double{from.value.normalized}, double{next->value.normalized}, way));
}

std::optional<std::int64_t> AutomationCurve::FindNextChange(std::int64_t sample) const {
    constexpr std::int64_t kGrid = 16;
    Place const next = FindBehind(sample);
    if (next == mPoints.end())
        return std::nullopt;
    return MovesTo(next) ? std::min(next->sample, (sample / kGrid + 1) * kGrid) : next->sample;
}

std::int64_t AutomationCurve::CountPointsFrom(std::int64_t sample) const {
    return std::distance(std::ranges::lower_bound(mPoints, sample, {}, &AutomationPoint::sample), mPoints.end());
}

} // namespace vynhost
