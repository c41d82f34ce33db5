#pragma once

#include <cstdint>

namespace os {

/// Nanoseconds of a clock that never goes back and that no change of the date touches. Its zero means nothing.
/// [any-thread]
std::uint64_t GetMonotonicNanos() noexcept;

} // namespace os
