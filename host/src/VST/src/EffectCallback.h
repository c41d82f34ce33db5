#pragma once

#include <cstdint>
#include <functional>

namespace vynaudiofilterhost::vst {

/// Answers what an effect asks of its host; the arguments are those of AudioMasterFunction.
using EffectCallback =
    std::function<std::intptr_t(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr, float opt)>;

} // namespace vynaudiofilterhost::vst
