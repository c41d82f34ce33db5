#include "support/AllocationWatch.h"

#include <cerrno>
#include <cstddef>

// The program's own malloc family. Exported, so that the shared libraries and the plug-ins of the process bind to it
// too; operator new and delete arrive here as well.

#define VYNTEST_EXPORT extern "C" __attribute__((visibility("default")))

// Where the C library keeps its own, so that nothing has to be looked up while memory is asked for.
extern "C" {
void* __libc_malloc(std::size_t size) noexcept;
void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
void* __libc_realloc(void* memory, std::size_t size) noexcept;
void* __libc_memalign(std::size_t alignment, std::size_t size) noexcept;
void __libc_free(void* memory) noexcept;
}

using vyntest::watch::Note;

VYNTEST_EXPORT void* malloc(std::size_t size) noexcept {
    Note("malloc");
    return __libc_malloc(size);
}

VYNTEST_EXPORT void* calloc(std::size_t count, std::size_t size) noexcept {
    Note("calloc");
    return __libc_calloc(count, size);
}

VYNTEST_EXPORT void* realloc(void* memory, std::size_t size) noexcept {
    Note("realloc");
    return __libc_realloc(memory, size);
}

VYNTEST_EXPORT void free(void* memory) noexcept {
    if (memory)
        Note("free");
    __libc_free(memory);
}

VYNTEST_EXPORT void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    Note("aligned_alloc");
    return __libc_memalign(alignment, size);
}

VYNTEST_EXPORT void* memalign(std::size_t alignment, std::size_t size) noexcept {
    Note("memalign");
    return __libc_memalign(alignment, size);
}

VYNTEST_EXPORT int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    Note("posix_memalign");
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0)
        return EINVAL;
    *memory = __libc_memalign(alignment, size);
    return *memory ? 0 : ENOMEM;
}
