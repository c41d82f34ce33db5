#pragma once

#include "vynhost/ScanReport.h"

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/strings/UString.h"

#include <set>
#include <vector>

namespace vynhost {

class ScanRecords;

/// What a scan has to do, found out by a look at the disk and at what is known.
struct ScanPlan {
    std::vector<vynaudiofilterhost::PluginLocator> modules; ///< to be opened, those that may take longest first
    std::vector<vynaudiofilterhost::PluginLocator> retried; ///< those of them that were open when a scan was ended
    std::vector<ScanRow> rows;                              ///< of all others
    bool changedBans = false;                               ///< the library's dynamic ban list isn't what was loaded
    bool changedSettings = false;                           ///< likewise the inventory
    bool changedRecords = false;
};

/// Looks for modules and sets them beside the library's inventory, its ban lists and the records. What the disk has
/// made out of date is taken out there: bans of files that have changed since, and modules whose files are gone. A
/// module that was open when a scan was ended from outside is tried once more.
/// @param folders  where to look, with all below them; empty for all folders that are searched as a rule. What is known
///                 of modules elsewhere stays as it is.
/// @param all      whether to open modules that have not changed, too
/// Throws CommandError when a folder can't be searched.
/// [main-thread]
ScanPlan MakeScanPlan(std::vector<vyncore::UString> const& folders, bool all, ScanRecords& records);

/// What is left to do when modules have been opened or have gone: those that are in the inventory, whatever folders
/// they lie in, and have a filter without a descriptor, since another module had its ID first and has lost it.
/// @param tried  those to be left out as they were tried for this reason before; becomes the larger by the plan's
/// [main-thread]
ScanPlan MakeOrphanPlan(ScanRecords const& records, std::set<vynaudiofilterhost::PluginLocator>& tried);

} // namespace vynhost
