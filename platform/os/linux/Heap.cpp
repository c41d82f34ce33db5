#include "os/Heap.h"

#include <cstddef>
#include <cstdlib>

namespace os {

void JoinFreedMemory() noexcept {
    // The C library joins small pieces when it is asked for a large one. A volatile pointer keeps the compiler from
    // leaving both calls out.
    constexpr std::size_t kLarge = std::size_t{64} << 10;
    void* volatile const piece = std::malloc(kLarge);
    std::free(piece);
}

} // namespace os
