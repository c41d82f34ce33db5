#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace vynaudiofilterhost::vst3 {

/// Finds the queue of a parameter among those in use, in constant time however many they are. Owned by a
/// ParameterChanges, which decides what the places mean. It never allocates but in Reset.
///
/// Open addressing at half load at most; an entry counts only while it bears the current generation, which is what
/// makes Clear one addition.
class ParameterQueueIndex {
public:
    /// Makes room for `places` entries and forgets all of them. Throws std::bad_alloc and changes nothing then.
    /// [main-thread & suspended]
    void Reset(std::size_t places);

    /// The number of entries that Insert may take between two calls of Clear.
    /// [process-thread | main-thread & suspended]
    std::size_t Room() const noexcept { return mSlotCount / 2; }

    /// Forgets all entries.
    /// [process-thread | main-thread & suspended]
    void Clear() noexcept { ++mGeneration; }

    /// The place that was inserted with this parameter, -1 for none.
    /// [process-thread | main-thread & suspended]
    Steinberg::int32 Find(Steinberg::Vst::ParamID parameterID) const noexcept;

    /// Files a place. The parameter must be absent, and there must be room.
    /// [process-thread | main-thread & suspended]
    void Insert(Steinberg::Vst::ParamID parameterID, Steinberg::int32 place) noexcept;

private:
    /// All bytes 0 are an empty one: 0 is never the current generation.
    struct Slot {
        std::uint64_t generation;
        Steinberg::Vst::ParamID parameterID;
        Steinberg::int32 place;
    };
    struct FreeSlots {
        void operator()(Slot* slots) const noexcept { std::free(slots); }
    };

    std::size_t FindSlot(Steinberg::Vst::ParamID parameterID) const noexcept;

    std::unique_ptr<Slot[], FreeSlots> mSlots;
    std::size_t mSlotCount = 0;    // a power of two, or none
    std::uint64_t mGeneration = 1; // 64 bits never wrap
    unsigned mShift = 0;
};

} // namespace vynaudiofilterhost::vst3
