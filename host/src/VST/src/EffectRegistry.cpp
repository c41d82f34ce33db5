#include "vynaudiofilterhost/VST/src/EffectRegistry.h"

#include "vynaudiofilterhost/VST/src/CallGate.h"

#include <atomic>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace vynaudiofilterhost::vst::EffectRegistry {

namespace {

/// An effect's place. It is used again for others and never freed, so that whoever found it a moment too late still
/// stands on firm ground, and sees that it is another's.
struct Entry {
    std::atomic<AEffect*> effect{nullptr};
    CallGate gate;
    EffectCallback callback; ///< changes only while nobody is inside
};

/// A hash table with open addressing that readers walk while one writer changes it.
class Table {
public:
    explicit Table(std::size_t size) : mSlots(size) {}

    std::size_t GetSize() const noexcept { return mSlots.size(); }

    Entry* Find(AEffect* effect) const noexcept {
        for (std::size_t place = Hash(effect);; ++place) {
            Entry* const entry = At(place).load(std::memory_order_acquire);
            if (!entry || entry->effect.load(std::memory_order_relaxed) == effect)
                return entry;
        }
    }

    void Put(AEffect* effect, Entry& entry) noexcept {
        std::size_t place = Hash(effect);
        while (At(place).load(std::memory_order_relaxed))
            ++place;
        At(place).store(&entry, std::memory_order_release);
    }

private:
    using Slot = std::atomic<Entry*>;

    std::size_t Hash(AEffect* effect) const noexcept {
        return (reinterpret_cast<std::uintptr_t>(effect) * std::uintptr_t{0x9E3779B97F4A7C15}) >> 32;
    }
    Slot& At(std::size_t place) const noexcept { return mSlots[place & (mSlots.size() - 1)]; }

    mutable std::vector<Slot> mSlots; ///< a power of two of them, half of them empty
};

class Registry {
public:
    Registry() { UseTable(std::make_unique<Table>(kLeastSlots)); }

    bool Add(AEffect* effect, EffectCallback callback) {
        std::lock_guard const lock(mWriting);
        if (!effect || mTable.load()->Find(effect))
            return false;
        if (2 * (mUsedSlots + 1) > mTable.load()->GetSize())
            Rebuild();
        if (mFree.empty())
            mFree.push_back(&mEntries.emplace_back());
        Entry& entry = *mFree.back();
        mFree.pop_back();
        entry.callback = std::move(callback);
        entry.effect.store(effect, std::memory_order_seq_cst);
        mTable.load()->Put(effect, entry);
        ++mUsedSlots;
        ++mLive;
        return true;
    }

    // The calls that are waited for may come to add and remove effects themselves.
    void Remove(AEffect* effect) {
        std::unique_lock lock(mWriting);
        Entry* const entry = effect ? mTable.load()->Find(effect) : nullptr;
        if (!entry)
            return;
        entry->effect.store(nullptr, std::memory_order_seq_cst);
        --mLive;
        lock.unlock();
        entry->gate.WaitForCalls();
        // One that is removed in its own call stays as it is, for that call goes on in its callback.
        if (entry->gate.IsInside())
            return;
        entry->callback = nullptr;
        lock.lock();
        mRetired.push_back(entry);
    }

    void WaitForCalls(AEffect* effect) {
        if (Entry* const entry = FindForChange(effect))
            entry->gate.WaitForCalls();
    }

    bool Contains(AEffect* effect) { return FindForChange(effect) != nullptr; }

    std::optional<std::intptr_t> Call(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                      void* ptr, float opt) {
        Entry* const entry = Find(effect);
        if (!entry)
            return std::nullopt;
        CallGate::Pass const pass(entry->gate);
        if (entry->effect.load(std::memory_order_seq_cst) != effect)
            return std::nullopt;
        return entry->callback(opcode, index, value, ptr, opt);
    }

private:
    Entry* FindForChange(AEffect* effect) {
        std::lock_guard const lock(mWriting);
        return effect ? mTable.load()->Find(effect) : nullptr;
    }

    Entry* Find(AEffect* effect) noexcept {
        mLookups.fetch_add(1, std::memory_order_seq_cst);
        Entry* const entry = mTable.load(std::memory_order_seq_cst)->Find(effect);
        mLookups.fetch_sub(1, std::memory_order_seq_cst);
        return entry;
    }

    // The slots of effects that have gone stay used until then, and so do their entries.
    void Rebuild() {
        std::size_t size = kLeastSlots;
        while (size < 4 * (mLive + 1))
            size *= 2;
        auto table = std::make_unique<Table>(size);
        for (Entry& entry : mEntries) {
            if (AEffect* const effect = entry.effect.load(std::memory_order_relaxed))
                table->Put(effect, entry);
        }
        UseTable(std::move(table));
        mUsedSlots = mLive;
        mFree.insert(mFree.end(), mRetired.begin(), mRetired.end());
        mRetired.clear();
    }

    void UseTable(std::unique_ptr<Table> table) {
        mTables.push_back(std::move(table));
        mTable.store(mTables.back().get(), std::memory_order_seq_cst);
        // Whoever looks something up from now on does it in the new table.
        if (mLookups.load(std::memory_order_seq_cst) == 0)
            mTables.erase(mTables.begin(), mTables.end() - 1);
    }

    static constexpr std::size_t kLeastSlots = 64;

    std::atomic<Table*> mTable{nullptr};
    std::atomic<int> mLookups{0};

    std::mutex mWriting;
    std::vector<std::unique_ptr<Table>> mTables; ///< the last is in use, the others perhaps still being read
    std::deque<Entry> mEntries;
    std::vector<Entry*> mRetired; ///< out of use, but in a slot
    std::vector<Entry*> mFree;
    std::size_t mLive = 0;
    std::size_t mUsedSlots = 0;
};

// Never destroyed: an effect that the process's end finds alive may still call.
Registry& TheRegistry() {
    static Registry& registry = *new Registry;
    return registry;
}

} // namespace

bool Add(AEffect* effect, EffectCallback callback) {
    return TheRegistry().Add(effect, std::move(callback));
}

void Remove(AEffect* effect) {
    TheRegistry().Remove(effect);
}

void WaitForCalls(AEffect* effect) {
    TheRegistry().WaitForCalls(effect);
}

bool Contains(AEffect* effect) {
    return TheRegistry().Contains(effect);
}

std::optional<std::intptr_t> Call(AEffect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                  void* ptr, float opt) {
    return effect ? TheRegistry().Call(effect, opcode, index, value, ptr, opt) : std::nullopt;
}

} // namespace vynaudiofilterhost::vst::EffectRegistry
