#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace vynaudiofilterhost {

/// Values that are found by a hash, in one piece of memory: whoever looks for one of very many reads one place of it.
/// Several values may have one hash. A value is something that is false when it is empty, such as a pointer; no empty
/// one is kept. Pointers to values hold until one is added or removed.
template <class Value>
class HashSlots {
public:
    /// The value of that hash that matches, or null.
    /// [main-thread]
    template <class Matches>
    Value const* Find(std::size_t hash, Matches const& matches) const {
        std::size_t const place = FindPlace(hash, matches);
        return place < mSlots.size() ? &mSlots[place].value : nullptr;
    }
    template <class Matches>
    Value* Find(std::size_t hash, Matches const& matches) {
        std::size_t const place = FindPlace(hash, matches);
        return place < mSlots.size() ? &mSlots[place].value : nullptr;
    }

    /// [main-thread]
    void Add(std::size_t hash, Value value) {
        // A quarter stays empty, so that a run of used slots is short.
        if (4 * (mSize + 1) > 3 * mSlots.size())
            Grow();
        Place({hash, std::move(value)});
        ++mSize;
    }

    /// Whether there was one that matches; the first is gone.
    /// [main-thread]
    template <class Matches>
    bool Remove(std::size_t hash, Matches const& matches) {
        std::size_t const place = FindPlace(hash, matches);
        if (place >= mSlots.size())
            return false;
        CloseGap(place);
        --mSize;
        return true;
    }

    /// [main-thread]
    void Clear() {
        mSlots = {};
        mSize = 0;
    }

    /// [main-thread]
    std::size_t GetSize() const noexcept { return mSize; }

private:
    struct Slot {
        std::size_t hash = 0;
        Value value{};
    };

    // There are 2^n slots, or none.
    std::size_t Mask() const noexcept { return mSlots.size() - 1; }

    // mSlots.size() when there is none.
    template <class Matches>
    std::size_t FindPlace(std::size_t hash, Matches const& matches) const {
        if (mSlots.empty())
            return 0;
        std::size_t place = hash & Mask();
        while (mSlots[place].value && !(mSlots[place].hash == hash && matches(mSlots[place].value)))
            place = (place + 1) & Mask();
        return mSlots[place].value ? place : mSlots.size();
    }

    void Place(Slot slot) {
        std::size_t place = slot.hash & Mask();
        while (mSlots[place].value)
            place = (place + 1) & Mask();
        mSlots[place] = std::move(slot);
    }

    void Grow() {
        std::vector<Slot> former = std::exchange(mSlots, std::vector<Slot>(mSlots.empty() ? 8 : 2 * mSlots.size()));
        for (Slot& slot : former) {
            if (slot.value)
                Place(std::move(slot));
        }
    }

    // Brings up whatever would not be found behind an empty slot.
    void CloseGap(std::size_t gap) {
        for (std::size_t next = (gap + 1) & Mask(); mSlots[next].value; next = (next + 1) & Mask()) {
            std::size_t const fromHome = (next - mSlots[next].hash) & Mask();
            if (fromHome < ((next - gap) & Mask()))
                continue;
            mSlots[gap] = std::move(mSlots[next]);
            gap = next;
        }
        mSlots[gap] = {};
    }

    std::vector<Slot> mSlots;
    std::size_t mSize = 0;
};

} // namespace vynaudiofilterhost
