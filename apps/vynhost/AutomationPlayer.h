#pragma once

#include "vynhost/AutomationCurve.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <queue>
#include <utility>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Plays the curves of a filter's parameters while the filter renders: it sets what is due, and says how far may be
/// rendered until something is due again. Its work grows with what changes alone. Time only goes forward.
class AutomationPlayer {
public:
    /// Another parameter's curve; a parameter has one.
    /// [main-thread]
    void Add(int parameter, AutomationCurve curve);

    /// Sets the parameters whose values have changed since the last call.
    /// @param position  the sample of the timeline that is rendered next; not in front of that of the last call
    /// @param most      samples that are to be rendered, above 0
    /// @return          how many of them may be rendered before the next call, above 0
    /// [main-thread]
    int Advance(vynaudiofilterhost::AudioFilter& filter, std::int64_t position, int most);

    /// The number of points at this sample and behind it.
    /// [main-thread]
    std::int64_t CountPointsFrom(std::int64_t sample) const;

private:
    struct Lane {
        int parameter;
        AutomationCurve curve;
        std::optional<float> value; ///< that the filter was given
    };
    using Due = std::pair<std::int64_t, std::size_t>; ///< a sample and the lane that changes there

    void Play(vynaudiofilterhost::AudioFilter& filter, std::size_t index, std::int64_t position);
    void Schedule(std::size_t lane, std::int64_t behind);

    std::vector<Lane> mLanes;
    std::priority_queue<Due, std::vector<Due>, std::greater<>> mDue; ///< at most one of each lane
};

} // namespace vynhost
