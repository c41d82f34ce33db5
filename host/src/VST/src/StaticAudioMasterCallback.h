#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

namespace vynaudiofilterhost::vst {

/// The function through which every effect talks to this host. It asks the effect's filter first, when it has one
/// (EffectRegistry), and answers by itself what needs none: also to an effect that has no filter yet, or none any more.
/// `effect` may be null. Nothing that the host's own code throws gets out.
/// [any-thread]
std::intptr_t StaticAudioMasterCallback(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                        void* ptr, float opt) noexcept;

/// The number of the effect that is being made, for entry functions that ask: a shell makes the one of that number.
/// Set in front of every call of an entry function.
/// [main-thread]
void SetCurrentShellPluginID(std::int32_t number) noexcept;

} // namespace vynaudiofilterhost::vst
