#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace os {

/// Waits until one of the descriptors is readable, or at its end, or until a time of os::GetMonotonicNanos; without a
/// time for as long as it takes. A descriptor of -1 is passed over. May come back early and without a reason, as when a
/// signal is handled.
/// [any-thread]
void WaitForDescriptors(std::span<std::intptr_t const> descriptors, std::optional<std::uint64_t> deadlineNanos);

} // namespace os
