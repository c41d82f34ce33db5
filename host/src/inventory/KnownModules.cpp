#include "vynaudiofilterhost/inventory/KnownModules.h"

#include "vynaudiofilterhost/inventory/LocatorOrder.h"

#include <iterator>
#include <utility>

namespace vynaudiofilterhost {

void KnownModules::Put(Pointer info) {
    PluginLocator const locator = info->GetLocator();
    std::size_t const hash = HashOfModule(locator);
    if (Entry* const former = FindEntry(locator, hash))
        Erase(*former);
    Entry& entry = mEntries.emplace_back();
    entry.locator = locator;
    entry.info = info;
    entry.place = std::prev(mEntries.end());
    mByFile.Add(entry, hash);
    if (mInfosKnown)
        mInfos.push_back(std::move(info));
}

bool KnownModules::Remove(PluginLocator const& locator) {
    Entry* const entry = FindEntry(locator, HashOfModule(locator));
    if (entry)
        Erase(*entry);
    return entry != nullptr;
}

void KnownModules::Erase(Entry& entry) {
    // At once, so that it keeps no info alive that has left.
    mInfos.clear();
    mInfosKnown = false;
    mByFile.Remove(entry);
    mEntries.erase(entry.place);
}

void KnownModules::Clear() {
    mInfos.clear();
    mInfosKnown = true;
    mByFile.Clear();
    mEntries.clear();
}

KnownModules::Pointer KnownModules::Find(PluginLocator const& locator) const {
    Entry const* const entry = FindEntry(locator, HashOfModule(locator));
    return entry ? entry->info : nullptr;
}

KnownModules::Entry* KnownModules::FindEntry(PluginLocator const& locator, std::size_t hash) const {
    return mByFile.FindIf(hash, [&](Entry const& entry) { return entry.locator == locator; });
}

KnownModules::Infos const& KnownModules::GetInfos() const {
    if (!std::exchange(mInfosKnown, true)) {
        for (Entry const& entry : mEntries)
            mInfos.push_back(entry.info);
    }
    return mInfos;
}

KnownModules::Locators KnownModules::GetLocators(bool enabledOnly) const {
    return ListLocators([enabledOnly](Entry const& entry) { return !enabledOnly || entry.info->IsEnabled(); });
}

KnownModules::Differences KnownModules::CompareWith(Locators const& found, bool listUnknown) const {
    Differences differences;
    ++mRound;
    for (PluginLocator const& locator : found) {
        if (Entry* const known = FindEntry(locator, HashOfModule(locator)))
            known->foundInRound = mRound;
        else if (listUnknown)
            differences.unknown.push_back(locator);
    }
    differences.vanished = ListLocators([this](Entry const& entry) { return entry.foundInRound != mRound; });
    return differences;
}

template <class Condition>
KnownModules::Locators KnownModules::ListLocators(Condition const& condition) const {
    std::vector<PluginLocator const*> chosen;
    for (Entry const& entry : mEntries) {
        if (condition(entry))
            chosen.push_back(&entry.locator);
    }
    SortLocators(chosen);
    Locators locators;
    locators.reserve(chosen.size());
    for (PluginLocator const* const locator : chosen)
        locators.push_back(*locator);
    return locators;
}

} // namespace vynaudiofilterhost
