#pragma once

#include <cstddef>

namespace os {

/// The size of the machine's memory in bytes; 0 when the system doesn't tell.
/// [any-thread]
std::size_t GetMachineMemory() noexcept;

/// From now on, until the next call, this process may have so many bytes more than it has now; whoever asks for more in
/// it gets none. Code and files that are only read don't count.
/// [any-thread]
void LimitOwnMemory(std::size_t bytes) noexcept;

} // namespace os
