#pragma once

#include <cstdint>

namespace vynaudiofilterhost {

/// What a plug-in says of itself is checked before anything is sized or walked by it.
inline constexpr std::int32_t kMaxClasses = 10000;
inline constexpr std::int32_t kMaxBuses = 1000;
inline constexpr std::int32_t kMaxParameters = 1000000;
inline constexpr std::int32_t kMaxUnits = 100000;
inline constexpr std::int32_t kMaxPrograms = 1000000;
inline constexpr std::int32_t kMaxVSTChannels = 4096;       ///< of one side of an effect
inline constexpr std::int64_t kMaxVSTChunk = 256 << 20;     ///< in bytes
inline constexpr std::int32_t kMaxDelayedSamples = 1 << 26; ///< of all channels that go around a filter together

/// The count as it is, or 0 for one that is negative or beyond the limit: an absurd count is taken as none.
/// [any-thread]
constexpr std::int32_t PlausibleCount(std::int32_t count, std::int32_t limit) noexcept {
    return count < 0 || count > limit ? 0 : count;
}

} // namespace vynaudiofilterhost
