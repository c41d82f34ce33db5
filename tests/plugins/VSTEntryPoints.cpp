#include "plugins/VSTFixtureEffect.h"
#include "plugins/VSTFixtureState.h"

#include <string_view>

// Compiled once for each VST 2.x fixture module. The build says which entry points a module has
// (VYN_VST_FIXTURE_PLUGIN_MAIN, VYN_VST_FIXTURE_MAIN) and in VYN_VST_FIXTURE_HABIT how it behaves until configured.

using namespace vynfixtures;
using vynaudiofilterhost::vst::AEffect;
using vynaudiofilterhost::vst::AudioMasterFunction;

namespace vynfixtures {

VSTFixtureConfiguration MakeVSTFixtureDefaults() {
    constexpr std::string_view habit = VYN_VST_FIXTURE_HABIT;
    VSTFixtureConfiguration configuration =
        habit == "shell" ? VSTFixtureConfiguration::Shell() : VSTFixtureConfiguration();
    configuration.isShell |= habit == "empty shell";
    configuration.nullEntry = habit == "null entry";
    if (habit == "wrong magic")
        configuration.magic = 0x50747356;
    return configuration;
}

} // namespace vynfixtures

#define VYN_EXPORT __attribute__((visibility("default")))

extern "C" {

VYN_EXPORT VSTFixtureExports const* VSTFixtureEntry() {
    static VSTFixtureExports const exports = {
        .configure =
            [](VSTFixtureConfiguration const* configuration) {
                VSTFixtureState::Get().configuration = *configuration;
                VSTFixtureState::Get().throwingCalls = 0;
            },
        .calls = RecordedVSTCalls,
        .clearCalls = ClearRecordedVSTCalls,
        .snapshot = []() -> VSTFixtureSnapshot const* { return &VSTFixtureState::Get().snapshot; },
        .liveEffects = []() -> int { return VSTFixtureState::Get().liveEffects; },
        .effect = []() -> AEffect* { return VSTFixtureState::Get().lastEffect; },
        .host = []() -> AudioMasterFunction { return VSTFixtureState::Get().host; },
        .ownThreadCalls = []() -> int { return VSTFixtureState::Get().ownThreadCalls; },
    };
    return &exports;
}

#ifdef VYN_VST_FIXTURE_PLUGIN_MAIN
VYN_EXPORT AEffect* VSTPluginMain(AudioMasterFunction host) {
    return VSTFixtureEffect::Make(host, kVSTFixtureEntry);
}
#endif

#ifdef VYN_VST_FIXTURE_MAIN
// The language keeps the name "main" for itself, so that it can only be given to the linker.
VYN_EXPORT AEffect* VSTFixtureMain(AudioMasterFunction host) __asm__("main");

VYN_EXPORT AEffect* VSTFixtureMain(AudioMasterFunction host) {
    return VSTFixtureEffect::Make(host, kVSTFixtureMain);
}
#endif

} // extern "C"
