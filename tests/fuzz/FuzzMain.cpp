// The entry of a fuzzing program; VYN_FUZZ_TARGET names what it fuzzes.
#include "fuzz/FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    vynfuzz::VYN_FUZZ_TARGET(data, size);
    return 0;
}
