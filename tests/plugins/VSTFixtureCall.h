#pragma once

#include "plugins/CallLog.h"

#include <cstddef>
#include <cstdint>

namespace vynfixtures {

/// One call that the host made into a VST 2.x fixture module: an opcode of the dispatcher with its arguments, or a
/// VSTFixtureOpcode. Of these setParameter has its value in `opt`, getParameter none, and the audio calls have the
/// number of samples in `value`. A plain record, so that a copy outlives the module.
struct VSTFixtureCall {
    int sequence; ///< counts from 0 since the log was cleared
    int effect; ///< which effect, counted from 1 since the module was loaded; of an entry function the one that it made
    std::int32_t opcode;
    std::int32_t index;
    std::int64_t value;
    void const* pointer; ///< to tell it from null and from others; what it led to may have gone
    float opt;
    std::size_t thread; ///< FixtureThread() of the calling thread
};

/// The log holds this many calls; later ones are counted only.
inline constexpr int kVSTFixtureLogCapacity = 8192;

} // namespace vynfixtures
