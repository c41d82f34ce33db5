#include "vynhost/AutomationPlayer.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>

namespace vynhost {

void AutomationPlayer::Add(int parameter, AutomationCurve curve) {
    mLanes.push_back({parameter, std::move(curve), std::nullopt});
    Schedule(mLanes.size() - 1, -1);
}

int AutomationPlayer::Advance(vynaudiofilterhost::AudioFilter& filter, std::int64_t position, int most) {
    while (!mDue.empty() && mDue.top().first <= position) {
        std::size_t const lane = mDue.top().second;
        mDue.pop();
        Play(filter, lane, position);
        Schedule(lane, position);
    }
    return mDue.empty() ? most : static_cast<int>(std::min<std::int64_t>(most, mDue.top().first - position));
}

void AutomationPlayer::Play(vynaudiofilterhost::AudioFilter& filter, std::size_t index, std::int64_t position) {
    Lane& lane = mLanes[index];
    std::optional<float> const value = lane.curve.GetValue(position);
    if (!value || value == lane.value)
        return;
    filter.SetParameter(lane.parameter, *value);
    lane.value = value;
}

void AutomationPlayer::Schedule(std::size_t lane, std::int64_t behind) {
    if (auto const next = mLanes[lane].curve.FindNextChange(behind))
        mDue.emplace(*next, lane);
}

std::int64_t AutomationPlayer::CountPointsFrom(std::int64_t sample) const {
    std::int64_t points = 0;
    for (Lane const& lane : mLanes)
        points += lane.curve.CountPointsFrom(sample);
    return points;
}

} // namespace vynhost
