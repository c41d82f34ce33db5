#pragma once

#include "plugins/VSTFixtureCall.h"
#include "plugins/VSTFixtureConfiguration.h"
#include "plugins/VSTFixtureSnapshot.h"

namespace vynfixtures {

/// The tests' own door into a VST 2.x fixture module: its export "VSTFixtureEntry" returns this table.
struct VSTFixtureExports {
    /// Takes effect for effects made from now on.
    void (*configure)(VSTFixtureConfiguration const*);
    VSTFixtureCall const* (*calls)(int* count);
    /// Forgets the calls, and the host's answers to calls of the module.
    void (*clearCalls)();
    VSTFixtureSnapshot const* (*snapshot)();
    /// Effects that are not closed.
    int (*liveEffects)();
    /// The effect made last, or null when it is closed. Its counts may be written.
    vynaudiofilterhost::vst::AEffect* (*effect)();
    /// What the entry function was given last.
    vynaudiofilterhost::vst::AudioMasterFunction (*host)();
    /// Calls of the host that effects' own threads have made.
    int (*ownThreadCalls)();
};

using VSTFixtureEntryFunction = VSTFixtureExports const* (*)();

} // namespace vynfixtures
