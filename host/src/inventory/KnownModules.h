#pragma once

#include "vynaudiofilterhost/inventory/HashGroups.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <list>
#include <vector>

namespace vynaudiofilterhost {

/// The module infos of the inventory: kept in the order of adding, found by their locators without a walk. A module is
/// there once at most, under the locator that its info had when it came.
class KnownModules {
public:
    using Pointer = boost::intrusive_ptr<PluginModuleInfo>;
    using Infos = std::vector<Pointer>;
    using Locators = std::vector<PluginLocator>;

    KnownModules() = default;
    KnownModules(KnownModules const&) = delete;
    KnownModules& operator=(KnownModules const&) = delete;

    /// Puts the module behind all others, in the place of what was there of it.
    /// [main-thread]
    void Put(Pointer info);
    /// Whether it was there.
    /// [main-thread]
    bool Remove(PluginLocator const& locator);
    /// [main-thread]
    void Clear();

    /// Null when the module isn't there.
    /// [main-thread]
    Pointer Find(PluginLocator const& locator) const;
    /// In the order of adding. Holds until a module comes or goes.
    /// [main-thread]
    Infos const& GetInfos() const;
    /// In the order of the locators, all or the enabled ones alone.
    /// [main-thread]
    Locators GetLocators(bool enabledOnly) const;

    /// What a look at the disk tells, set beside what is known.
    struct Differences {
        Locators unknown;  ///< found, not known; in the order of the finding
        Locators vanished; ///< known, not found; in the order of the locators
    };
    /// @param listUnknown  false leaves the list of the unknown empty
    /// [main-thread]
    Differences CompareWith(Locators const& found, bool listUnknown) const;

private:
    struct Entry {
        PluginLocator locator;
        Pointer info;
        unsigned long long foundInRound = 0;
        HashGroupHook<Entry> byFile;
        std::list<Entry>::iterator place;
    };

    Entry* FindEntry(PluginLocator const& locator, std::size_t hash) const;
    void Erase(Entry& entry);
    template <class Condition>
    Locators ListLocators(Condition const& condition) const;

    std::list<Entry> mEntries;
    HashGroups<Entry, &Entry::byFile> mByFile;
    mutable unsigned long long mRound = 0;

    // Made when somebody looks: it need not be kept in order while many modules go.
    mutable Infos mInfos;
    mutable bool mInfosKnown = true;
};

} // namespace vynaudiofilterhost
