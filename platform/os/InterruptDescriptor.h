#pragma once

#include <cstdint>

namespace os {

/// Turns a wish that the program end (Ctrl-C, the user's log-out, the system's request) into something to wait for, so
/// that work can be brought to an end in order. It takes the place of the system's own handling, which ends the
/// process, for as long as it lives; so it belongs to a program and never to a library. What is ignored when it is made
/// stays ignored. At most one object at a time.
class InterruptDescriptor {
public:
    /// Throws std::runtime_error when the system has no descriptor to give.
    /// [main-thread]
    InterruptDescriptor();
    InterruptDescriptor(InterruptDescriptor const&) = delete;
    InterruptDescriptor& operator=(InterruptDescriptor const&) = delete;
    /// [main-thread]
    ~InterruptDescriptor();

    /// Readable once the program is wanted to end, and from then on.
    /// [any-thread]
    std::intptr_t Handle() const noexcept;

    /// [any-thread]
    bool WasInterrupted() const noexcept;
};

} // namespace os
