#pragma once

#include "vyncore/Export.h"

#include <cstdint>

namespace vyncore::utility {

/// Time stamps of a clock that never goes back and isn't set: good for intervals, without relation to the time of day.
struct VYN_API HighPrecisionTime {
    /// The present time stamp.
    /// [process-thread | any-thread]
    static std::uint64_t GetCurrentTimeStamp() noexcept;

    /// The length of an interval between two time stamps, in nanoseconds.
    /// [process-thread | any-thread]
    static std::uint64_t ConvertToNanos(std::uint64_t interval) noexcept;

    /// The interval of so many nanoseconds, to add to a time stamp.
    /// [process-thread | any-thread]
    static std::uint64_t ConvertFromNanos(std::uint64_t nanos) noexcept;
};

} // namespace vyncore::utility
