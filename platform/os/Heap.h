#pragma once

namespace os {

/// To be called when very many small pieces of memory have been freed at once: has the allocator join them, so that
/// what is allocated later lies together and not in gaps all over the place. Costs some tens of nanoseconds per piece,
/// once, which some later allocation would have had to bear.
/// [any-thread]
void JoinFreedMemory() noexcept;

} // namespace os
