#include <cstdlib>

// What a plug-in does that allocates while it processes.
extern "C" __attribute__((visibility("default"))) void AllocateInModule() {
    void* volatile memory = std::malloc(64);
    std::free(memory);
}
