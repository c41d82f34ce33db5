#pragma once

#include "vynaudiofilterhost/inventory/HashSlots.h"

#include <cstddef>

namespace vynaudiofilterhost {

/// What an entry holds to be in a group.
template <class Entry>
struct HashGroupHook {
    std::size_t hash = 0;
    Entry* next = nullptr; ///< in a ring
    Entry* previous = nullptr;
};

/// Entries that are found by a hash, those of one hash in the order of adding. Adding and removing take the same time
/// however many have one hash. The entries belong to someone else and stay where they are while they are in.
template <class Entry, HashGroupHook<Entry> Entry::*kHook>
class HashGroups {
public:
    /// [main-thread]
    void Add(Entry& entry, std::size_t hash) {
        (entry.*kHook).hash = hash;
        Entry* const* const first = mFirsts.Find(hash, AnyOfHash);
        if (!first) {
            Link(entry, entry);
            mFirsts.Add(hash, &entry);
            return;
        }
        Link(*((**first).*kHook).previous, entry);
        Link(entry, **first);
    }

    /// [main-thread]
    void Remove(Entry& entry) {
        HashGroupHook<Entry> const hook = entry.*kHook;
        if (hook.next == &entry) {
            mFirsts.Remove(hook.hash, AnyOfHash);
            return;
        }
        Link(*hook.previous, *hook.next);
        Entry** const first = mFirsts.Find(hook.hash, AnyOfHash);
        if (*first == &entry)
            *first = hook.next;
    }

    /// The first entry of that hash for which the condition holds, or null.
    /// [main-thread]
    template <class Condition>
    Entry* FindIf(std::size_t hash, Condition const& condition) const {
        Entry* const* const first = mFirsts.Find(hash, AnyOfHash);
        Entry* entry = first ? *first : nullptr;
        while (entry && !condition(*entry))
            entry = (entry->*kHook).next != *first ? (entry->*kHook).next : nullptr;
        return entry;
    }

    /// The entries are not touched.
    /// [main-thread]
    void Clear() { mFirsts.Clear(); }

private:
    static bool AnyOfHash(Entry*) { return true; }

    static void Link(Entry& entry, Entry& next) {
        (entry.*kHook).next = &next;
        (next.*kHook).previous = &entry;
    }

    HashSlots<Entry*> mFirsts;
};

} // namespace vynaudiofilterhost
