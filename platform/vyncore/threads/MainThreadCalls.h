#pragma once

#include "vyncore/Export.h"

#include <cstdint>
#include <functional>
#include <optional>

/// The main thread's call queue: calls that any thread files with a delay and that the application runs on its main
/// thread. No thread stands behind it. An application either asks when the next call is due, or waits for the queue's
/// descriptor in the event loop that it has, and then calls RunDueCalls.
///
/// Calls run in the order of their due times, and those of one due time in the order of filing. The queue lives to the
/// end of the process, past every static object; calls that are never run are dropped there.
namespace vyncore::threads {

/// Files a call that becomes due in so many milliseconds. False, and nothing filed, for an empty function or when
/// memory runs out.
/// [any-thread]
VYN_API bool AsyncCallFromMainThread(std::function<void()> call, unsigned milliseconds) noexcept;

/// Runs the calls that are due when it is called, and returns how many ran. What a running call files waits for the
/// next RunDueCalls, also with a delay of 0. A running call may itself run a loop that calls RunDueCalls.
///
/// What a call throws comes out here; that call is done with, and the rest of the due calls are still due.
/// [main-thread]
VYN_API int RunDueCalls();

/// When the next call is due, as a time stamp of HighPrecisionTime: one that lies behind is due now. Nothing when the
/// queue is empty.
/// [any-thread]
VYN_API std::optional<std::uint64_t> NextDueNanos();

/// A handle for the event loop of the system (a file descriptor for poll on Linux), readable while a call is due. Only
/// RunDueCalls makes it unreadable again: nobody reads from it or closes it. -1 when the system has none to give; the
/// queue works without it. The same handle on every call.
/// [any-thread]
VYN_API std::intptr_t GetCallQueueDescriptor();

} // namespace vyncore::threads
