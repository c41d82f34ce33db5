#pragma once

#include "vynaudiofilterhost/VST/src/EffectCallback.h"

#include <cstdint>
#include <optional>

namespace vynaudiofilterhost::vst {

struct AEffect;

/// The process-wide table of the effects that have a filter, with what answers their calls.
///
/// Effects call on any thread, some within the audio: Call neither locks, waits nor allocates, and its cost doesn't
/// grow with the number of effects. Changes may come on several threads; they are made one after the other.
namespace EffectRegistry {

/// False, and no change, when the effect is there already.
/// [any-thread]
bool Add(AEffect* effect, EffectCallback callback);

/// From its return on the callback isn't running any more, but for a call in which the calling thread itself is. So it
/// waits for the calls of other threads to come to their ends, which they must be able to without the waiting thread.
/// [any-thread]
void Remove(AEffect* effect);

/// Waits as Remove does, and leaves the effect where it is.
/// [any-thread]
void WaitForCalls(AEffect* effect);

/// [any-thread]
bool Contains(AEffect* effect);

/// What the effect's callback answers; nothing when it has none. Null is no effect.
/// [any-thread]
std::optional<std::intptr_t> Call(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                  void* ptr, float opt);

} // namespace EffectRegistry

} // namespace vynaudiofilterhost::vst
