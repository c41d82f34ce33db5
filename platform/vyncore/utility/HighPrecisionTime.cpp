#include "vyncore/utility/HighPrecisionTime.h"

#include "os/Clock.h"

namespace vyncore::utility {

std::uint64_t HighPrecisionTime::GetCurrentTimeStamp() noexcept {
    return os::GetMonotonicNanos();
}

std::uint64_t HighPrecisionTime::ConvertToNanos(std::uint64_t interval) noexcept {
    return interval;
}

std::uint64_t HighPrecisionTime::ConvertFromNanos(std::uint64_t nanos) noexcept {
    return nanos;
}

} // namespace vyncore::utility
