#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/HashGroups.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <list>
#include <unordered_set>
#include <vector>

namespace vynaudiofilterhost {

/// The two lists of the descriptor manager, all descriptors and the visible ones, each in the order of adding. What is
/// looked for is found without a walk: an object, an equal one, a unique ID, a module.
///
/// 1. An object stands in a list once at most, and in both at the same place: whatever enters both enters at once.
/// 2. The unique ID and the locator of a descriptor stay as they are while it is listed; its flags may change.
class CatalogueLists {
public:
    using Pointer = boost::intrusive_ptr<AudioFilterDescriptor>;
    using Infos = std::vector<Pointer>;

    CatalogueLists() = default;
    CatalogueLists(CatalogueLists const&) = delete;
    CatalogueLists& operator=(CatalogueLists const&) = delete;

    /// Appends to either list unless an equal descriptor is there, to the visible one only what is offered. Whether all
    /// descriptors have one more since. The object itself may be in neither list.
    /// [main-thread]
    bool Add(Pointer const& info, bool offered);
    /// Takes this very object out of both. Whether it was among all.
    /// [main-thread]
    bool Remove(AudioFilterDescriptor const& info);
    /// Takes out the descriptors of a module, which it returns, and shows all others.
    /// [main-thread]
    Infos RemoveLocator(PluginLocator const& locator);
    /// Both become these, equal ones among them included.
    /// [main-thread]
    void Assign(Infos const& infos);

    /// The first among all with that unique ID, or null.
    /// [main-thread]
    Pointer FindFirst(vyncore::UString const& id) const;
    /// Those among all that are internal, or those that are not.
    /// [main-thread]
    Infos GetAll(bool internal) const;
    /// What is visible. Holds until the lists change.
    /// [main-thread]
    Infos const& GetVisible() const;

private:
    struct Entry {
        Pointer info;
        bool inAll = false;
        bool visible = false;
        HashGroupHook<Entry> byID;
        HashGroupHook<Entry> byFile;
        std::list<Entry>::iterator place;
    };

    template <class Condition>
    Entry* FindByID(vyncore::UString const& id, Condition const& condition) const;
    void Append(Pointer const& info, bool inAll, bool visible);
    void Erase(Entry& entry);
    void ShowAll();
    void ForgetVisible() const;

    std::list<Entry> mEntries;
    HashGroups<Entry, &Entry::byID> mByID;
    HashGroups<Entry, &Entry::byFile> mByFile;
    std::unordered_set<Entry*> mInOneList; ///< those that only one of the lists has

    // Made when somebody looks: it need not be kept in order while many modules are cleared and filled again.
    mutable Infos mVisible;
    mutable bool mVisibleKnown = true;
};

} // namespace vynaudiofilterhost
