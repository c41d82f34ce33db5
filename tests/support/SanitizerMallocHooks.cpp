#include "support/AllocationWatch.h"

#include <cstddef>

// A sanitizer has a malloc of its own that can't be replaced, but it tells of each call. Declared here because g++
// comes without the header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(void const volatile*, std::size_t),
                                                         void (*released)(void const volatile*));

namespace {

void NoteAllocation(void const volatile* /*memory*/, std::size_t /*size*/) {
    vyntest::watch::Note("malloc");
}

void NoteRelease(void const volatile* memory) {
    if (memory)
        vyntest::watch::Note("free");
}

__attribute__((constructor)) void InstallHooks() {
    __sanitizer_install_malloc_and_free_hooks(&NoteAllocation, &NoteRelease);
}

} // namespace
