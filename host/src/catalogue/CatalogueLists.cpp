#include "vynaudiofilterhost/catalogue/CatalogueLists.h"

#include "vynaudiofilterhost/catalogue/DescriptorMap.h"
#include "vynaudiofilterhost/inventory/LocatorOrder.h"

#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;

template <class Condition>
CatalogueLists::Entry* CatalogueLists::FindByID(UString const& id, Condition const& condition) const {
    return mByID.FindIf(HashOfID(id), condition);
}

bool CatalogueLists::Add(Pointer const& info, bool offered) {
    auto const isEqual = [&info](Entry const& entry) { return *entry.info == *info; };
    UString const& id = info->GetUniqueID();
    bool const toAll = !FindByID(id, [&](Entry const& entry) { return entry.inAll && isEqual(entry); });
    bool const toVisible =
        offered && !FindByID(id, [&](Entry const& entry) { return entry.visible && isEqual(entry); });
    if (toAll || toVisible)
        Append(info, toAll, toVisible);
    return toAll;
}

void CatalogueLists::Append(Pointer const& info, bool inAll, bool visible) {
    Entry& entry = mEntries.emplace_back();
    entry.info = info;
    entry.inAll = inAll;
    entry.visible = visible;
    entry.place = std::prev(mEntries.end());
    mByID.Add(entry, HashOfID(info->GetUniqueID()));
    mByFile.Add(entry, HashOfModule(info->GetLocator()));
    if (inAll != visible)
        mInOneList.insert(&entry);
    if (visible && mVisibleKnown)
        mVisible.push_back(info);
}

bool CatalogueLists::Remove(AudioFilterDescriptor const& info) {
    Entry* const entry =
        FindByID(info.GetUniqueID(), [&info](Entry const& candidate) { return candidate.info.get() == &info; });
    bool const wasInAll = entry && entry->inAll;
    if (entry)
        Erase(*entry);
    return wasInAll;
}

void CatalogueLists::Erase(Entry& entry) {
    if (entry.visible)
        ForgetVisible();
    mByID.Remove(entry);
    mByFile.Remove(entry);
    mInOneList.erase(&entry);
    mEntries.erase(entry.place);
}

CatalogueLists::Infos CatalogueLists::RemoveLocator(PluginLocator const& locator) {
    std::vector<Entry*> entries;
    mByFile.FindIf(HashOfModule(locator), [&](Entry& entry) {
        if (entry.info->GetLocator() == locator)
            entries.push_back(&entry);
        return false;
    });
    Infos removed;
    for (Entry* const entry : entries) {
        removed.push_back(entry->info);
        Erase(*entry);
    }
    ShowAll();
    return removed;
}

void CatalogueLists::ShowAll() {
    if (mInOneList.empty())
        return;
    ForgetVisible();
    for (Entry* const entry : std::exchange(mInOneList, {})) {
        entry->visible = true;
        if (!entry->inAll)
            Erase(*entry);
    }
}

void CatalogueLists::Assign(Infos const& infos) {
    mByID.Clear();
    mByFile.Clear();
    mInOneList.clear();
    mEntries.clear();
    mVisible.clear();
    mVisibleKnown = true;
    for (Pointer const& info : infos)
        Append(info, true, true);
}

CatalogueLists::Pointer CatalogueLists::FindFirst(UString const& id) const {
    Entry const* const found =
        FindByID(id, [&id](Entry const& entry) { return entry.inAll && entry.info->GetUniqueID() == id; });
    return found ? found->info : nullptr;
}

CatalogueLists::Infos CatalogueLists::GetAll(bool internal) const {
    Infos found;
    for (Entry const& entry : mEntries) {
        if (entry.inAll && entry.info->IsInternal() == internal)
            found.push_back(entry.info);
    }
    return found;
}

CatalogueLists::Infos const& CatalogueLists::GetVisible() const {
    if (!std::exchange(mVisibleKnown, true)) {
        for (Entry const& entry : mEntries) {
            if (entry.visible)
                mVisible.push_back(entry.info);
        }
    }
    return mVisible;
}

// At once, so that it keeps no descriptor alive that has left the lists.
void CatalogueLists::ForgetVisible() const {
    mVisible.clear();
    mVisibleKnown = false;
}

} // namespace vynaudiofilterhost
