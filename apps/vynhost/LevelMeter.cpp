#include "vynhost/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace vynhost {

void LevelMeter::Add(std::span<float> samples) noexcept {
    for (float& sample : samples) {
        if (!std::isfinite(sample)) {
            sample = 0.0f;
            ++mNonFinite;
        }
        double const value = sample;
        mPeak = std::max(mPeak, std::abs(value));
        mSumOfSquares += value * value;
    }
    mCount += static_cast<std::int64_t>(samples.size());
}

double LevelMeter::GetRMS() const noexcept {
    return mCount == 0 ? 0.0 : std::sqrt(mSumOfSquares / static_cast<double>(mCount));
}

} // namespace vynhost
