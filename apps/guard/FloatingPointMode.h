#pragma once

#include <cstdint>

namespace vynguard {

/// How the processor computes in floating point on a thread: how it rounds, what traps, and whether denormals count as
/// 0. A value. On processors other than x86-64 all modes are equal and setting one does nothing.
class FloatingPointMode {
public:
    /// That of the calling thread.
    /// [any-thread]
    static FloatingPointMode Get() noexcept;

    /// Makes it that of the calling thread, exceptions noted but not trapped included.
    /// [any-thread]
    void Set() const noexcept;

    /// The same as plug-ins expect it: rounding to nearest, without traps, denormals taken and given as 0.
    /// [any-thread]
    FloatingPointMode MakeForAudio() const noexcept;

    /// Exceptions that are merely noted make no difference.
    /// [any-thread]
    bool operator==(FloatingPointMode const& other) const noexcept;

private:
    std::uint32_t mVector = 0; ///< the register of SSE, with the exceptions noted
    std::uint16_t mStack = 0;  ///< the control word of the x87, which computes `long double`
};

} // namespace vynguard
