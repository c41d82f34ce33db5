#pragma once

#include <cstdio>
#include <cstdlib>

namespace vynfuzz {

/// Ends the process, whatever the build, unless the condition holds.
inline void Require(bool condition, char const* what) {
    if (condition)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace vynfuzz
