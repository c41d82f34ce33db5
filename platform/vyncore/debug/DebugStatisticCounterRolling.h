#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace vyncore::debug {

/// Figures over the last N values that were added: a value object that belongs to one thread and never allocates.
/// While it is empty every figure is 0.
template <class T, std::size_t N>
class DebugStatisticCounterRolling {
    static_assert(N > 0);

public:
    /// Adds a value; the oldest one falls out once there are N.
    /// [any-thread]
    void Add(T value) noexcept {
        mValues[mNext] = value;
        mNext = (mNext + 1) % N;
        mCount = std::min(mCount + 1, N);
    }

    /// How many values the figures are made of: 0 to N.
    /// [any-thread]
    std::size_t GetCount() const noexcept { return mCount; }

    /// The value added last.
    /// [any-thread]
    T GetLast() const noexcept { return mCount == 0 ? T{} : mValues[(mNext + N - 1) % N]; }

    /// The mean of the values, as a T. Summed anew on each call, so that rounding errors don't pile up.
    /// [any-thread]
    T GetAverage() const noexcept {
        return mCount == 0 ? T{} : std::accumulate(mValues.begin(), End(), T{}) / static_cast<T>(mCount);
    }

    /// [any-thread]
    T GetMinimum() const noexcept { return mCount == 0 ? T{} : *std::min_element(mValues.begin(), End()); }

    /// [any-thread]
    T GetMaximum() const noexcept { return mCount == 0 ? T{} : *std::max_element(mValues.begin(), End()); }

private:
    // Until the array is full for the first time only its front holds values.
    auto End() const noexcept { return mValues.begin() + static_cast<std::ptrdiff_t>(mCount); }

    std::array<T, N> mValues{};
    std::size_t mNext = 0;
    std::size_t mCount = 0;
};

} // namespace vyncore::debug
