#pragma once

#include <cstdint>
#include <span>

namespace vynhost {

/// Runs along with audio and keeps its peak and the sum for its RMS level, over all samples of all channels together.
/// It keeps no audio. Samples that are no finite number would spoil every figure behind them, so it takes them out.
class LevelMeter {
public:
    /// Measures samples in place: one that isn't finite is set to 0 and counted.
    /// [any-thread]
    void Add(std::span<float> samples) noexcept;

    /// The greatest magnitude, linear; 0 before any sample.
    /// [any-thread]
    double GetPeak() const noexcept { return mPeak; }

    /// Linear; 0 before any sample.
    /// [any-thread]
    double GetRMS() const noexcept;

    /// How many samples were not finite.
    /// [any-thread]
    std::int64_t GetNonFiniteCount() const noexcept { return mNonFinite; }

private:
    double mPeak = 0.0;
    double mSumOfSquares = 0.0;
    std::int64_t mCount = 0;
    std::int64_t mNonFinite = 0;
};

} // namespace vynhost
