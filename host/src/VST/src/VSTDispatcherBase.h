#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <cstdint>

namespace vynaudiofilterhost::vst {

/// The road to an effect's dispatcher for those that speak to it. The effect is somebody else's, and may be null.
class VSTDispatcherBase {
public:
    explicit VSTDispatcherBase(AEffect* effect) noexcept : mEffect(effect) {}
    VSTDispatcherBase(VSTDispatcherBase const&) = delete;
    VSTDispatcherBase& operator=(VSTDispatcherBase const&) = delete;
    virtual ~VSTDispatcherBase();

protected:
    /// The effect's answer; 0 without an effect, and when it throws.
    /// [any-thread]
    std::intptr_t Dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                           float opt) const noexcept;

    /// [any-thread]
    AEffect* GetEffect() const noexcept { return mEffect; }

private:
    AEffect* const mEffect;
};

/// The same for those that have nothing but the effect.
/// [any-thread]
std::intptr_t DispatchTo(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                         float opt) noexcept;

} // namespace vynaudiofilterhost::vst
