#include "vynaudiofilterhost/VST3/src/ParameterQueueIndex.h"

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

namespace vynaudiofilterhost::vst3 {

void ParameterQueueIndex::Reset(std::size_t places) {
    std::size_t const slotCount = std::bit_ceil(std::max<std::size_t>(2 * places, 16));
    // calloc and not a vector: large blocks come as pages of zeros that cost nothing until they are touched.
    std::unique_ptr<Slot[], FreeSlots> slots(static_cast<Slot*>(std::calloc(slotCount, sizeof(Slot))));
    if (!slots)
        throw std::bad_alloc();
    mSlots = std::move(slots);
    mSlotCount = slotCount;
    mShift = 64 - static_cast<unsigned>(std::countr_zero(slotCount));
}

Steinberg::int32 ParameterQueueIndex::Find(Steinberg::Vst::ParamID parameterID) const noexcept {
    if (!mSlots)
        return -1;
    Slot const& slot = mSlots[FindSlot(parameterID)];
    return slot.generation == mGeneration ? slot.place : -1;
}

void ParameterQueueIndex::Insert(Steinberg::Vst::ParamID parameterID, Steinberg::int32 place) noexcept {
    mSlots[FindSlot(parameterID)] = {mGeneration, parameterID, place};
}

std::size_t ParameterQueueIndex::FindSlot(Steinberg::Vst::ParamID parameterID) const noexcept {
    // Parameter IDs come as runs of numbers, as packed characters or as hashes; the golden ratio spreads all of them.
    std::size_t slot = (parameterID * std::uint64_t{0x9E3779B97F4A7C15}) >> mShift;
    while (mSlots[slot].generation == mGeneration && mSlots[slot].parameterID != parameterID)
        slot = (slot + 1) & (mSlotCount - 1);
    return slot;
}

} // namespace vynaudiofilterhost::vst3
