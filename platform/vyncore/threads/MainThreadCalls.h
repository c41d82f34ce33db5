#pragma once

#include "vyncore/Export.h"

#include <cstdint>
#include <functional>
#include <optional>

/// The main thread's call queue: calls that any thread files with a delay, or that wait for a descriptor, and that the
/// application runs on its main thread. No thread stands behind it. An application either asks when the next call is
/// due, or waits for the queue's descriptor in the event loop that it has, and then calls RunDueCalls.
///
/// Who only asks for times had better call RunDueCalls every few milliseconds while plug-ins show windows: of watched
/// descriptors the times say nothing.
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

/// Has RunDueCalls run the call whenever the descriptor is readable, until UnwatchDescriptor: behind the calls that are
/// due, and in the order of watching when there are several for one descriptor. One whose other end has gone, and that
/// stays readable all the same, is given up after a while. Returns a number to name the watch by, 0 when the descriptor
/// can't be watched. The descriptor stays whoever's it is; who closes it ends the watch first.
/// [main-thread]
VYN_API std::uint64_t WatchDescriptor(std::intptr_t descriptor, std::function<void()> call) noexcept;

/// Ends a watch: its call isn't begun any more. One that is running, which may be the caller, comes to its end.
/// [main-thread]
VYN_API void UnwatchDescriptor(std::uint64_t watch) noexcept;

/// A handle for the event loop of the system (a file descriptor for poll on Linux), readable while a call is due or a
/// watched descriptor is readable. Only RunDueCalls makes it unreadable again: nobody reads from it or closes it. -1
/// when the system has none to give; the queue works without it. The same handle on every call.
/// [any-thread]
VYN_API std::intptr_t GetCallQueueDescriptor();

} // namespace vyncore::threads
