#pragma once

#include "vynaudiofilterhost/VST3/src/ParameterPoint.h"

#include <cstddef>
#include <cstdint>

namespace vynaudiofilterhost::vst3 {

/// The newest 100 points of one parameter, between any number of writers and one reader.
///
/// A record without a constructor: all bytes 0 is an empty ring, so that the rings of thousands of parameters can stand
/// in zeroed memory that nothing has touched yet.
///
/// Thread safety: Push from any thread; Pop from one thread at a time. Nobody waits for anybody, as long as
/// fewer than kCapacity writers are inside at once: a point whose writer has been held up is read later, and a slot
/// whose writer has been held up for a whole turn of the ring is passed over. A point may be overwritten by a newer
/// one, but what Pop gives was pushed as it is.
///
/// Invariants. A ticket is the number of a push; ticket t belongs to slot t % kCapacity, in turn t / kCapacity + 1.
/// 1. A slot has at most one owner, the writer that moved it to kBusy; only the owner writes the value.
/// 2. The count of tickets moves past t only after the slot of t carries t's turn (or a later one).
class ParameterPointRing {
public:
    static constexpr std::size_t kCapacity = kParameterPointCapacity;

    /// Adds the point behind all others; when the ring is full the oldest goes.
    /// [any-thread]
    void Push(ParameterPoint const& point) noexcept;

    /// Takes the oldest point that is there. False when there is none. A point that is still being written is left for
    /// later, unless a newer one stands behind it already: then it counts as overwritten.
    /// [any-thread]
    bool Pop(ParameterPoint& point) noexcept;

    /// Hands what is in the ring to visit, oldest first, and takes nothing.
    /// [any-thread]
    template <class Visitor>
    void ForEach(Visitor&& visit) const {
        std::uint64_t next = Load(mNext);
        ParameterPoint point{};
        for (std::size_t count = 0; count < kCapacity && Read(next, point); ++count)
            visit(point);
    }

private:
    enum SlotState : std::uint32_t {
        kComplete = 0,  ///< the value of this turn is there
        kBusy = 1,      ///< the owner is writing the value of this turn
        kAbandoned = 2, ///< passed over in this turn; the owner of an earlier one is still inside
        kEmpty = 3      ///< passed over in this turn; nobody is inside any more
    };

    struct Slot {
        std::uint64_t tag;   ///< from the top: sample offset 32 bits, turn 30 bits, SlotState 2 bits
        std::uint64_t value; ///< the bits of the value
    };

    static std::uint32_t TurnOf(std::uint64_t ticket) noexcept;
    static std::uint64_t MakeTag(std::int32_t sampleOffset, std::uint32_t turn, SlotState state) noexcept;

    static std::uint64_t Load(std::uint64_t& word) noexcept;
    static void PassOver(std::uint64_t& tag, std::uint64_t seen, std::uint32_t turn) noexcept;
    static void Publish(Slot& slot, ParameterPoint const& point, std::uint32_t turn) noexcept;
    bool Read(std::uint64_t& next, ParameterPoint& point) const noexcept;

    // Written and read through std::atomic_ref alone.
    mutable std::uint64_t mTickets; ///< pushes so far
    mutable std::uint64_t mNext;    ///< the ticket that the reader looks at next
    mutable Slot mSlots[kCapacity];
};

} // namespace vynaudiofilterhost::vst3
