#include "vynhost/BanCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/CommandError.h"
#include "vynhost/JSONText.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/ScanRecords.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/TechnologyName.h"

#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/strings/StringUtils.h"

#include <array>
#include <ctime>
#include <optional>

namespace vynhost {

using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vyncore::string::UTF16to8;

namespace {

std::vector<PluginLocator> ListBans() {
    auto const& bans = BannedPluginManager::GetInstance();
    return {bans.BannedBegin(), bans.BannedEnd()};
}

nlohmann::ordered_json ToDocument(PluginLocator const& module, ScanRecord const* record) {
    nlohmann::ordered_json document{{"path", UTF16to8(module.GetPath())},
                                    {"technology", TechnologyName(module.GetTechnologyType())}};
    for (char const* const key : {"reason", "by", "time", "size", "changed"})
        document[key] = nullptr;
    if (!record)
        return document;
    document["reason"] = DescribeBan(record);
    document["by"] = record->state == ScanRecord::State::kBannedByUser ? "user" : "scan";
    document["time"] = record->time;
    document["size"] = record->stamp.size;
    document["changed"] = record->stamp.changed;
    return document;
}

std::optional<std::string> FindUnsupportedFile() {
    auto const file = GetUnsupportedFile();
    return file.Exists() ? std::optional<std::string>(UTF16to8(file.FullPath())) : std::nullopt;
}

std::string FormatJSON(ScanRecords const& records) {
    auto banned = nlohmann::ordered_json::array();
    for (PluginLocator const& module : ListBans())
        banned.push_back(ToDocument(module, records.Find(module)));
    nlohmann::ordered_json document{{"banned", std::move(banned)}, {"unsupported", nullptr}};
    if (auto const file = FindUnsupportedFile())
        document["unsupported"] = *file;
    return ToText(document);
}

std::string FormatTime(std::int64_t time) {
    std::time_t const seconds = time;
    std::array<char, 32> text{};
    if (time != 0)
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", std::localtime(&seconds));
    return text.data();
}

std::string FormatTable(ScanRecords const& records) {
    ColumnTable table({{"since"}, {"module"}, {"reason"}});
    std::vector<PluginLocator> const bans = ListBans();
    for (PluginLocator const& module : bans) {
        ScanRecord const* const record = records.Find(module);
        table.AddRow({record ? FormatTime(record->time) : "", UTF16to8(module.GetPath()), DescribeBan(record)});
    }
    std::string text = bans.empty() ? "no modules are banned\n" : table.Finish();
    if (auto const file = FindUnsupportedFile())
        text += "what is not supported stands in " + *file + "\n";
    return text;
}

void Add(PluginLocator const& module, std::string const& reason, ScanRecords& records) {
    BannedPluginManager::GetInstance().AddBannedPlugin(module);
    PluginModuleInfoManager::GetInstance().RemovePluginLocators({module});
    records.Put(module, {.state = ScanRecord::State::kBannedByUser,
                         .reason = reason,
                         .stamp = os::GetFileStamp(module.GetPath()).value_or(os::FileStamp{}),
                         .time = GetUnixTime()});
}

void Remove(PluginLocator const& module, ScanRecords& records) {
    BannedPluginManager::GetInstance().RemoveBannedPlugin(module);
    records.Forget(module);
}

std::vector<PluginLocator> FindModulesToChange(BanRequest const& request) {
    std::vector<PluginLocator> modules;
    for (std::string const& text : request.modules) {
        std::vector<PluginLocator> found = FindModules(text);
        if (request.action == BanRequest::Action::kRemove)
            std::erase_if(found, [](auto const& m) { return !BannedPluginManager::GetInstance().IsPluginBanned(m); });
        if (found.empty())
            throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kPlugin, text, "is not banned");
        modules.insert(modules.end(), found.begin(), found.end());
    }
    return modules;
}

// What is added goes to the ban list first, what is removed leaves it last: a failure in between leaves no module
// without its ban.
void Change(BanRequest const& request, ScanRecords& records) {
    bool const adds = request.action == BanRequest::Action::kAdd;
    for (PluginLocator const& module : FindModulesToChange(request)) {
        if (adds)
            Add(module, request.reason, records);
        else
            Remove(module, records);
    }
    if (adds)
        SaveBans();
    SaveText(GetRecordsFile(), records.GetText());
    if (adds)
        SaveSettings();
    else
        SaveBans();
}

} // namespace

std::string RunBan(BanRequest const& request) {
    Session const session;
    bool const changes = request.action != BanRequest::Action::kList;
    std::optional<StoredFilesLock> lock;
    if (changes)
        lock.emplace();
    LoadStoredFiles();
    ScanRecords records;
    records.Load(GetRecordsFile());
    if (changes)
        Change(request, records);
    return request.json ? FormatJSON(records) : FormatTable(records);
}

} // namespace vynhost
