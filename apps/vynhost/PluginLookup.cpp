#include "vynhost/PluginLookup.h"

#include "vynhost/CommandError.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/NumberText.h"
#include "vynhost/ScanRecords.h"
#include "vynhost/StoredFiles.h"

#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

namespace vynhost {

using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vyncore::UString;
using vyncore::string::UpperCase;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;

namespace {

[[noreturn]] void ThrowUnknown(std::string const& plugin) {
    UString const part = UpperCase(UTF8to16(TrimBlanks(plugin)));
    KnownFilters similar = ListKnownFilters();
    std::erase_if(similar,
                  [&](auto const& filter) { return UpperCase(filter->GetName()).find(part) == UString::npos; });
    throw CommandError::OfPlugin(plugin,
                                 "there is no such file, and no plug-in of that name or ID is known" +
                                     (similar.empty() || part.empty() ? "" : "; similar: " + TellFilters(similar)) +
                                     " (vynhost scan looks for plug-ins, vynhost list tells them)");
}

// One that a new scan would lift doesn't count any more.
bool IsInForce(PluginLocator const& module, ScanRecord const* record) {
    return BannedPluginManager::GetInstance().IsPluginBanned(module) &&
           !(record && record->state == ScanRecord::State::kBanned && HasChanged(module, *record));
}

void CheckBan(std::string const& plugin, PluginLocator const& module) {
    ScanRecords records;
    records.Load(GetRecordsFile());
    ScanRecord const* const record = records.Find(module);
    if (!IsInForce(module, record))
        return;
    std::string const reason = DescribeBan(record);
    throw CommandError::OfPlugin(plugin, "is banned" + (reason.empty() ? "" : ": it " + reason) +
                                             " (vynhost ban remove allows it again)");
}

// The module may be named by its bundle, and by way of links.
void CheckBansBelow(std::string const& path) {
    LoadBans();
    std::error_code failed;
    UString const folder = UTF8to16(std::filesystem::canonical(path, failed).string());
    auto const& bans = BannedPluginManager::GetInstance();
    for (auto it = bans.BannedBegin(); it != bans.BannedEnd(); ++it) {
        auto const banned = std::filesystem::canonical(UTF16to8(it->GetPath()), failed);
        if (!failed && IsBelow(UTF8to16(banned.string()), folder))
            CheckBan(path, *it);
    }
}

} // namespace

FoundPlugin FindPlugin(std::string const& plugin, std::string const& classID) {
    std::error_code ignored;
    if (std::filesystem::exists(plugin, ignored)) {
        CheckBansBelow(plugin);
        return {plugin, classID};
    }
    LoadStoredFiles();
    KnownFilters const found = FindKnownFilters(plugin);
    if (found.empty())
        ThrowUnknown(plugin);
    if (found.size() > 1)
        ThrowAmbiguous(plugin, found);
    CheckBan(plugin, found.front()->GetLocator());
    return {UTF16to8(found.front()->GetLocator().GetPath()), UTF16to8(found.front()->GetUniqueID())};
}

} // namespace vynhost
