#pragma once

#include "vyncore/Export.h"

#include <cstddef>
#include <cstring>

/// Float buffers for audio, aligned to 64 bytes so that vector instructions of any width fit, and what is done with
/// them on the render path.
namespace vynaccelerate::utility {

/// A buffer for so many samples, with unspecified contents. Null on failure; a count of 0 gives a buffer of no use but
/// to be freed. Given back with Free. [any-thread]
VYN_API float* Malloc_Float(std::size_t count) noexcept;

/// Gives a buffer of Malloc_Float back. Null does nothing.
/// [any-thread]
VYN_API void Free(float* buffer) noexcept;

/// Copies count samples. The two ranges either don't overlap or are the same; with a count of 0 the pointers aren't
/// looked at.
/// [process-thread | any-thread]
inline void Copy(std::size_t count, float const* source, float* destination) noexcept {
    // memmove, because a caller that processes in place copies a buffer onto itself.
    if (count > 0)
        std::memmove(destination, source, count * sizeof(float));
}

/// Sets count samples to 0.
/// [process-thread | any-thread]
VYN_API void Zero(std::size_t count, float* buffer) noexcept;

} // namespace vynaccelerate::utility
