#pragma once

#include <array>
#include <string>

/// The bookkeeping between what sees the calls (interposed functions, sanitizer hooks) and the scopes that ask.
namespace vyntest::watch {

/// What one thread has done while a scope was open on it.
struct ThreadRecord {
    int openScopes = 0;
    int violations = 0;
    char const* firstCall = nullptr;
    std::array<void*, 24> firstStack{};
    int firstStackSize = 0;
};

/// The record of the calling thread. Neither allocates nor locks.
/// [any-thread]
ThreadRecord& Record() noexcept;

/// Counts a call of this name when a scope is open on the calling thread. Neither allocates nor locks.
/// [any-thread]
void Note(char const* call) noexcept;

/// The stack of the first violation of the calling thread, a line for each frame.
/// [any-thread]
std::string FirstStackText();

/// Called with the message of a scope that failed.
using Reporter = void (*)(std::string const& message);

/// Replaces the reporter, which at first writes to standard error and ends the process.
/// [main-thread]
void SetReporter(Reporter reporter) noexcept;

/// [any-thread]
void Report(std::string const& message);

/// Says that locks are seen in this program.
/// [main-thread]
void SetWatchesLocks() noexcept;

/// [any-thread]
bool WatchesLocks() noexcept;

} // namespace vyntest::watch
