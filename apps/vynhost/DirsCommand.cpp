#include "vynhost/DirsCommand.h"

#include "vynhost/ColumnTable.h"
#include "vynhost/CommandError.h"
#include "vynhost/JSONText.h"
#include "vynhost/ModuleSearch.h"
#include "vynhost/Session.h"
#include "vynhost/StoredFiles.h"
#include "vynhost/TechnologyName.h"

#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vynaudiofilterhost::PluginTechnology;
using vyncore::UString;
using vyncore::string::UTF16to8;

namespace {

using Folders = std::vector<UString>;

PluginModuleInfoManager& GetInventory() {
    return PluginModuleInfoManager::GetInstance();
}

std::string FormatJSON() {
    auto list = nlohmann::ordered_json::array();
    for (auto const& technology : GetInventory().GetPluginTechnologies()) {
        auto folders = nlohmann::ordered_json::array();
        for (UString const& folder : ListSearchedFolders(*technology))
            folders.push_back(UTF16to8(folder));
        list.push_back({{"technology", TechnologyName(technology->GetType())},
                        {"changeable", technology->UsesDirectories()},
                        {"folders", std::move(folders)}});
    }
    return ToText(list);
}

std::string FormatTable() {
    ColumnTable table({{"format"}, {"folder"}, {"note"}});
    for (auto const& technology : GetInventory().GetPluginTechnologies()) {
        for (UString const& folder : ListSearchedFolders(*technology)) {
            std::error_code ignored;
            bool const there = std::filesystem::is_directory(UTF16to8(folder), ignored);
            table.AddRow({TechnologyName(technology->GetType()), UTF16to8(folder), there ? "" : "is not there"});
        }
    }
    return table.Finish();
}

std::vector<PluginModuleInfoManager::TechnologyPointer> ListChangeable() {
    auto technologies = GetInventory().GetPluginTechnologies();
    std::erase_if(technologies, [](auto const& technology) { return !technology->UsesDirectories(); });
    if (technologies.empty())
        throw CommandError::WrongUsage("no format searches folders of the user's choice; VST3 plug-ins are searched "
                                       "for where the variable VST3_PATH says");
    return technologies;
}

Folders MakeWhole(std::vector<std::string> const& folders, bool mustExist) {
    Folders whole;
    for (std::string const& folder : folders) {
        std::error_code failed;
        if (mustExist && !std::filesystem::is_directory(folder, failed))
            throw CommandError::OfFile(folder, "is no folder");
        whole.push_back(MakeWholePath(folder));
    }
    return whole;
}

bool IsSearched(PluginTechnology const& technology, UString const& path) {
    return std::any_of(technology.DirectoryBegin(), technology.DirectoryEnd(),
                       [&](UString const& folder) { return IsBelow(path, folder); });
}

void Remove(PluginTechnology& technology, Folders const& folders) {
    technology.RemovePluginDirectories(folders);
    std::vector<PluginLocator> modules = GetInventory().GetPluginLocators();
    std::erase_if(modules, [&](PluginLocator const& module) {
        bool const isMeant =
            std::ranges::any_of(folders, [&](UString const& folder) { return IsBelow(module.GetPath(), folder); });
        return module.GetTechnologyType() != technology.GetType() || !isMeant ||
               IsSearched(technology, module.GetPath());
    });
    GetInventory().RemovePluginLocators(modules);
}

void CheckRemovable(Folders const& folders) {
    auto const technologies = ListChangeable();
    for (UString const& folder : folders) {
        bool const known = std::ranges::any_of(technologies, [&](auto const& technology) {
            return std::find(technology->DirectoryBegin(), technology->DirectoryEnd(), folder) !=
                   technology->DirectoryEnd();
        });
        if (!known)
            throw CommandError::OfFile(UTF16to8(folder), "is none of the folders that are searched");
    }
}

void Change(DirsRequest const& request) {
    using Action = DirsRequest::Action;
    Folders const folders = MakeWhole(request.folders, request.action == Action::kAdd);
    if (request.action == Action::kRemove)
        CheckRemovable(folders);
    for (auto const& technology : ListChangeable()) {
        if (request.action == Action::kAdd)
            technology->AddPluginDirectories(folders);
        else if (request.action == Action::kRemove)
            Remove(*technology, folders);
        else
            technology->ResetDirectoriesToDefault();
    }
    SaveSettings();
}

} // namespace

std::string RunDirs(DirsRequest const& request) {
    Session const session;
    bool const changes = request.action != DirsRequest::Action::kList;
    std::optional<StoredFilesLock> lock;
    if (changes)
        lock.emplace();
    LoadStoredFiles();
    if (changes)
        Change(request);
    return request.json ? FormatJSON() : FormatTable();
}

} // namespace vynhost
