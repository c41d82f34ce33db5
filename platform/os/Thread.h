#pragma once

namespace os {

/// The system's number of the calling thread, never 0. Asked of the system once per thread, then remembered.
/// [any-thread]
unsigned GetCurrentThreadID() noexcept;

} // namespace os
