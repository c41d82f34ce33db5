#include "vynaudiofilterhost/VST3/src/ParameterPointRing.h"

#include <atomic>
#include <bit>
#include <type_traits>

namespace vynaudiofilterhost::vst3 {

namespace {

using AtomicWord = std::atomic_ref<std::uint64_t>;

static_assert(AtomicWord::is_always_lock_free);
static_assert(std::is_trivially_default_constructible_v<ParameterPointRing>);

constexpr std::uint32_t kTurnMask = 0x3FFFFFFF;

std::uint32_t TagTurn(std::uint64_t tag) {
    return static_cast<std::uint32_t>(tag >> 2) & kTurnMask;
}

std::uint32_t TagState(std::uint64_t tag) {
    return static_cast<std::uint32_t>(tag & 3);
}

// Turns wrap, so what is newer is told by the distance.
bool IsNewer(std::uint32_t turn, std::uint32_t other) {
    std::uint32_t const distance = (turn - other) & kTurnMask;
    return distance != 0 && distance <= kTurnMask / 2;
}

void MovePast(std::uint64_t& tickets, std::uint64_t ticket) {
    AtomicWord(tickets).compare_exchange_strong(ticket, ticket + 1, std::memory_order_acq_rel);
}

} // namespace

std::uint64_t ParameterPointRing::Load(std::uint64_t& word) noexcept {
    return AtomicWord(word).load(std::memory_order_acquire);
}

std::uint32_t ParameterPointRing::TurnOf(std::uint64_t ticket) noexcept {
    return static_cast<std::uint32_t>(ticket / kCapacity + 1) & kTurnMask;
}

std::uint64_t ParameterPointRing::MakeTag(std::int32_t sampleOffset, std::uint32_t turn, SlotState state) noexcept {
    return std::uint64_t{static_cast<std::uint32_t>(sampleOffset)} << 32 | std::uint64_t{turn} << 2 | state;
}

void ParameterPointRing::Push(ParameterPoint const& point) noexcept {
    for (;;) {
        std::uint64_t const ticket = Load(mTickets);
        std::uint32_t const turn = TurnOf(ticket);
        Slot& slot = mSlots[ticket % kCapacity];
        std::uint64_t tag = Load(slot.tag);
        if (IsNewer(TagTurn(tag), turn))
            continue; // the others have been round meanwhile
        if (TagTurn(tag) == turn) {
            MovePast(mTickets, ticket); // taken, but not yet counted
        } else if (TagState(tag) == kBusy || TagState(tag) == kAbandoned) {
            PassOver(slot.tag, tag, turn);
        } else if (AtomicWord(slot.tag).compare_exchange_strong(tag, MakeTag(0, turn, kBusy),
                                                                std::memory_order_acq_rel)) {
            MovePast(mTickets, ticket);
            Publish(slot, point, turn);
            return;
        }
    }
}

void ParameterPointRing::PassOver(std::uint64_t& tag, std::uint64_t seen, std::uint32_t turn) noexcept {
    // Failing means that the owner came out, or that another writer did the same: the next look tells.
    AtomicWord(tag).compare_exchange_strong(seen, MakeTag(0, turn, kAbandoned), std::memory_order_acq_rel);
}

void ParameterPointRing::Publish(Slot& slot, ParameterPoint const& point, std::uint32_t turn) noexcept {
    // Released, so that a reader that sees this value sees the tag kBusy too and takes its point back.
    AtomicWord(slot.value).store(std::bit_cast<std::uint64_t>(point.value), std::memory_order_release);
    std::uint64_t tag = MakeTag(0, turn, kBusy);
    if (AtomicWord(slot.tag).compare_exchange_strong(tag, MakeTag(point.sampleOffset, turn, kComplete),
                                                     std::memory_order_acq_rel))
        return;
    // Held up for a whole turn: the point is among those overwritten, and the slot is given free for the next turn.
    while (
        !AtomicWord(slot.tag).compare_exchange_weak(tag, MakeTag(0, TagTurn(tag), kEmpty), std::memory_order_acq_rel)) {
    }
}

bool ParameterPointRing::Pop(ParameterPoint& point) noexcept {
    std::uint64_t next = Load(mNext);
    bool const taken = Read(next, point);
    AtomicWord(mNext).store(next, std::memory_order_release);
    return taken;
}

bool ParameterPointRing::Read(std::uint64_t& next, ParameterPoint& point) const noexcept {
    std::uint64_t ticket = next;
    bool held = false; // the point at next is still being written
    for (std::uint64_t tickets = Load(mTickets); ticket < tickets; tickets = Load(mTickets)) {
        if (tickets - ticket > kCapacity)
            ticket = tickets - kCapacity;
        if (!held)
            next = ticket;
        Slot& slot = mSlots[ticket % kCapacity];
        std::uint64_t const tag = Load(slot.tag);
        if (TagTurn(tag) != TurnOf(ticket) || TagState(tag) >= kAbandoned) {
            ++ticket; // overwritten meanwhile, or passed over
        } else if (TagState(tag) == kBusy) {
            // A newer point behind it replaces it; without one it is worth waiting for, until another time.
            held = true;
            ++ticket;
        } else if (std::uint64_t const value = Load(slot.value);
                   AtomicWord(slot.tag).load(std::memory_order_relaxed) == tag) {
            point = {std::bit_cast<double>(value), static_cast<std::int32_t>(tag >> 32)};
            next = ticket + 1;
            return true;
        }
    }
    if (!held)
        next = ticket;
    return false;
}

} // namespace vynaudiofilterhost::vst3
