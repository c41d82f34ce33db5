#pragma once

#include "vyncore/Export.h"

namespace vynaudiofilterhost {

/// The thread that Initialize made the main thread, as vyncore::threads::GetCurrentThreadID names threads; 0, which
/// no thread has, before the first Initialize. It stays after Terminate.
/// [any-thread]
VYN_API unsigned GetMainThreadID() noexcept;

/// Whether the caller runs on that thread.
/// [any-thread]
VYN_API bool CurrentThreadIDIsMainThreadID() noexcept;

/// Makes the calling thread the main thread of the whole library. Not exported: Initialize alone calls it.
/// [main-thread]
void SetMainThreadToCurrentThread() noexcept;

} // namespace vynaudiofilterhost
