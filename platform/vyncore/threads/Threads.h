#pragma once

#include "vyncore/Export.h"

namespace vyncore::threads {

/// A number that names the calling thread while it lives. The system is asked once per thread, so that later calls are
/// fit for the process thread.
/// [any-thread]
VYN_API unsigned GetCurrentThreadID() noexcept;

} // namespace vyncore::threads
