#include "vynaudiofilterhost/VST/src/VSTDispatcherBase.h"

namespace vynaudiofilterhost::vst {

VSTDispatcherBase::~VSTDispatcherBase() = default;

std::intptr_t VSTDispatcherBase::Dispatch(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                          float opt) const noexcept {
    return DispatchTo(mEffect, opcode, index, value, ptr, opt);
}

std::intptr_t DispatchTo(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                         float opt) noexcept {
    if (!effect || !effect->dispatcher)
        return 0;
    try {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    } catch (...) {
        return 0;
    }
}

} // namespace vynaudiofilterhost::vst
