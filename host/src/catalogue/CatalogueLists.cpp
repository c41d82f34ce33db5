#include "vynaudiofilterhost/catalogue/CatalogueLists.h"

#include "vyncore/filesupport/CompareFileNames.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;

namespace {

std::size_t HashOf(UString const& id) {
    return std::hash<std::u16string_view>()(id);
}

std::size_t HashOf(PluginLocator const& locator) {
    return std::hash<std::string_view>()(vyncore::filesupport::FileNameKey(locator.GetPath()));
}

} // namespace

template <class Condition>
bool CatalogueLists::Contains(AudioFilterDescriptor const& info, Condition const& condition) const {
    auto const [first, last] = mByID.equal_range(HashOf(info.GetUniqueID()));
    return std::any_of(first, last,
                       [&](auto const& place) { return condition(*place.second) && *place.second->info == info; });
}

bool CatalogueLists::Add(Pointer const& info, bool offered) {
    bool const toAll = !Contains(*info, [](Entry const& entry) { return entry.inAll; });
    bool const toVisible = offered && !Contains(*info, [](Entry const& entry) { return entry.visible; });
    if (toAll || toVisible)
        Append(info, toAll, toVisible);
    return toAll;
}

void CatalogueLists::Append(Pointer const& info, bool inAll, bool visible) {
    mEntries.push_back({info, inAll, visible, {}, {}});
    Entry& entry = mEntries.back();
    entry.byID = mByID.emplace(HashOf(info->GetUniqueID()), &entry);
    entry.byFile = mByFile.emplace(HashOf(info->GetLocator()), &entry);
    mByObject.emplace(info.get(), std::prev(mEntries.end()));
    if (inAll != visible)
        mInOneList.insert(info.get());
    if (visible && mVisibleKnown)
        mVisible.push_back(info);
}

bool CatalogueLists::Remove(AudioFilterDescriptor const& info) {
    auto const found = mByObject.find(&info);
    if (found == mByObject.end())
        return false;
    bool const wasInAll = found->second->inAll;
    Erase(info);
    return wasInAll;
}

void CatalogueLists::Erase(AudioFilterDescriptor const& info) {
    auto const found = mByObject.find(&info);
    Entries::iterator const entry = found->second;
    if (entry->visible)
        ForgetVisible();
    mByID.erase(entry->byID);
    mByFile.erase(entry->byFile);
    mInOneList.erase(&info);
    mByObject.erase(found);
    mEntries.erase(entry);
}

CatalogueLists::Infos CatalogueLists::RemoveLocator(PluginLocator const& locator) {
    Infos removed;
    auto const [first, last] = mByFile.equal_range(HashOf(locator));
    for (auto place = first; place != last; ++place) {
        Entry const& entry = *place->second;
        if (entry.info->GetLocator() == locator)
            removed.push_back(entry.info);
    }
    for (Pointer const& info : removed)
        Erase(*info);
    ShowAll();
    return removed;
}

void CatalogueLists::ShowAll() {
    if (mInOneList.empty())
        return;
    ForgetVisible();
    for (AudioFilterDescriptor const* const info : std::exchange(mInOneList, {})) {
        Entry& entry = *mByObject.at(info);
        entry.visible = true;
        if (!entry.inAll)
            Erase(*info);
    }
}

void CatalogueLists::Assign(Infos const& infos) {
    mByID.clear();
    mByFile.clear();
    mInOneList.clear();
    mByObject.clear();
    mEntries.clear();
    mVisible.clear();
    mVisibleKnown = true;
    for (Pointer const& info : infos)
        Append(info, true, true);
}

CatalogueLists::Pointer CatalogueLists::FindFirst(UString const& id) const {
    auto const [first, last] = mByID.equal_range(HashOf(id));
    auto const found = std::find_if(
        first, last, [&](auto const& place) { return place.second->inAll && place.second->info->GetUniqueID() == id; });
    return found != last ? found->second->info : nullptr;
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
