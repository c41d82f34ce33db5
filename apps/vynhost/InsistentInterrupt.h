#pragma once

#include <cstdint>

namespace vynhost {

/// Ends the process, by the system's own handling, when it is wanted to end once more while the first wish is still
/// being followed: a plug-in may never give the main thread back. Wishes that come together are one, since shells and
/// sessions that end send several at a time. At most one object at a time; it is made after the
/// os::InterruptDescriptor, which still hears of every wish, and goes before it.
class InsistentInterrupt {
public:
    /// From the first wish on, how long others are taken for the same.
    static constexpr std::uint64_t kGraceNanos = 500'000'000;

    /// [main-thread]
    InsistentInterrupt() noexcept;
    InsistentInterrupt(InsistentInterrupt const&) = delete;
    InsistentInterrupt& operator=(InsistentInterrupt const&) = delete;
    /// [main-thread]
    ~InsistentInterrupt();
};

} // namespace vynhost
