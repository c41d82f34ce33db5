#pragma once

#include <string>

namespace vyntest {

/// A guard over the calling thread: while it lives, every allocation, every release of memory and every lock or wait
/// that this thread makes counts as a violation, whichever module makes it. Other threads are left alone.
///
/// Scopes nest; what happens inside an inner one counts for the outer one too. A scope ends on the thread that it began
/// on. Under sanitizers memory is watched all the same; locks are not watched under ThreadSanitizer, which needs to see
/// them first.
class NoAllocationScope {
public:
    enum class AtEnd { kFail, kCountOnly };

    /// [any-thread]
    explicit NoAllocationScope(AtEnd atEnd = AtEnd::kFail) noexcept;

    /// Fails the running test when there was a violation, unless it only counts. In a program without tests it says
    /// what happened on standard error and ends the process. [any-thread]
    ~NoAllocationScope();

    NoAllocationScope(NoAllocationScope const&) = delete;
    NoAllocationScope& operator=(NoAllocationScope const&) = delete;

    /// The number of violations since the scope began.
    /// [any-thread]
    int Violations() const noexcept;

    /// What the violations were: their number, the call that was the first of them in this thread's outermost scope,
    /// and who made it. Allocates without counting it. [any-thread]
    std::string Describe() const;

    /// Whether this build can see locks.
    /// [any-thread]
    static bool WatchesLocks() noexcept;

private:
    AtEnd const mAtEnd;
    int const mViolationsBefore;
};

} // namespace vyntest
