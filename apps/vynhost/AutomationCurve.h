#pragma once

#include "vynhost/ParameterScale.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vynhost {

/// A value that a parameter has at a sample of the timeline, which counts from the start of the rendering at 0.
struct AutomationPoint {
    std::int64_t sample = 0;
    ParameterValue value;
};

/// What value a parameter has when, between and behind its points. It never changes.
///
/// 1. In front of the first point there is no value, behind the last one its value holds.
/// 2. Of several points at one sample the last counts from there on, and the first is what the way there leads to.
/// 3. Between two points the value goes straight from one to the other, as display value when both were given as such,
///    else as normalized one; unless the parameter jumps: then it holds until the next point.
/// 4. Where it moves it changes at every 16th sample of the timeline, and at the points: what it is in between doesn't
///    depend on how the timeline is cut into blocks.
class AutomationCurve {
public:
    /// The normalized value of a display value.
    using Normalize = std::function<float(double display)>;

    /// @param points  in order of their samples, which are not negative
    /// [any-thread]
    AutomationCurve(std::vector<AutomationPoint> points, bool jumps, Normalize normalize);

    /// The normalized value. Empty in front of the first point.
    /// [main-thread]
    std::optional<float> GetValue(std::int64_t sample) const;

    /// The first sample behind this one where another value may be due. Empty when there is none.
    /// [any-thread]
    std::optional<std::int64_t> FindNextChange(std::int64_t sample) const;

    /// The number of points at this sample and behind it.
    /// [any-thread]
    std::int64_t CountPointsFrom(std::int64_t sample) const;

private:
    using Place = std::vector<AutomationPoint>::const_iterator;

    Place FindBehind(std::int64_t sample) const;
    bool MovesTo(Place next) const;

    std::vector<AutomationPoint> mPoints;
    bool mJumps;
    Normalize mNormalize;
};

} // namespace vynhost
