#pragma once

#include "plugins/VSTFixtureExports.h"

#include <atomic>

namespace vynfixtures {

/// How a module behaves until a test configures it; each module's entry points define theirs.
VSTFixtureConfiguration MakeVSTFixtureDefaults();

/// What a VST 2.x fixture module keeps between calls. Static, so that it is new each time the module is loaded.
struct VSTFixtureState {
    VSTFixtureConfiguration configuration = MakeVSTFixtureDefaults();
    VSTFixtureSnapshot snapshot{};
    std::atomic<int> liveEffects{0};
    std::atomic<int> effectsMade{0};
    std::atomic<int> throwingCalls{0}; ///< calls so far of the one that the configuration lets throw
    std::atomic<int> ownThreadCalls{0};
    std::atomic<vynaudiofilterhost::vst::AEffect*> lastEffect{nullptr};
    std::atomic<vynaudiofilterhost::vst::AudioMasterFunction> host{nullptr};

    static VSTFixtureState& Get();
};

/// Files a call. Takes no lock and allocates nothing; does nothing when logging is off.
/// [any-thread]
void RecordVSTCall(VSTFixtureCall const& call);

/// Throws when this call was told to, counting it.
/// [any-thread]
void ThrowInVSTCall(std::int32_t opcode);

VSTFixtureCall const* RecordedVSTCalls(int* count);
void ClearRecordedVSTCalls();

} // namespace vynfixtures
