#pragma once

#include <cstddef>

namespace os {

/// The size of the machine's memory in bytes; 0 when the system doesn't tell.
/// [any-thread]
std::size_t GetMachineMemory() noexcept;

/// How many bytes this process has that can be written and are nobody else's; 0 when the system doesn't tell.
/// [any-thread]
std::size_t GetOwnMemory() noexcept;

/// From now on, until the next call, this process may have so many bytes more than it has now; whoever asks for more in
/// it gets none. Code and files that are only read don't count.
/// [any-thread]
void LimitOwnMemory(std::size_t bytes) noexcept;

/// To be called before about so many bytes are taken in small pieces: has the system give them in large steps, where it
/// would interrupt the process for every few thousand of them. What isn't used costs nothing.
/// [main-thread]
void ExpectMemory(std::size_t bytes) noexcept;

} // namespace os
