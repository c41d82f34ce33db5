#include "vynhost/ModuleSearch.h"

#include "vynhost/CommandError.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/OneLine.h"

#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringUtils.h"

#include "os/PluginFolders.h"
#include "os/SearchFolders.h"

#include <cstdio>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vyncore::UString;
using vyncore::string::UTF8to16;

namespace {

/// Makes the technologies search other folders for as long as it lives.
class FolderChoice {
public:
    explicit FolderChoice(std::vector<UString> const& folders) {
        for (auto const& technology : PluginModuleInfoManager::GetInstance().GetPluginTechnologies()) {
            mFormer.emplace_back(technology,
                                 std::vector<UString>(technology->DirectoryBegin(), technology->DirectoryEnd()));
            technology->RemoveAllPluginDirectories();
            technology->AddPluginDirectories(folders);
        }
    }
    FolderChoice(FolderChoice const&) = delete;
    FolderChoice& operator=(FolderChoice const&) = delete;
    ~FolderChoice() {
        for (auto const& [technology, folders] : mFormer) {
            technology->RemoveAllPluginDirectories();
            technology->AddPluginDirectories(folders);
        }
    }

private:
    std::vector<std::pair<PluginModuleInfoManager::TechnologyPointer, std::vector<UString>>> mFormer;
};

// The outermost bundle that the path leads into, else the folder of the file, or the folder that it is.
std::filesystem::path FindFolderToSearch(std::filesystem::path const& path) {
    std::filesystem::path folder;
    for (std::filesystem::path const& step : path) {
        folder /= step;
        if (step.extension() == ".vst3" && std::filesystem::is_directory(folder))
            return folder;
    }
    return std::filesystem::is_directory(path) ? path : path.parent_path();
}

std::set<PluginLocator> ListKnownModules() {
    auto const& bans = BannedPluginManager::GetInstance();
    std::vector<PluginLocator> const known = PluginModuleInfoManager::GetInstance().GetPluginLocators();
    std::set<PluginLocator> modules(known.begin(), known.end());
    modules.insert(bans.BannedBegin(), bans.BannedEnd());
    return modules;
}

std::set<PluginLocator> FindByPath(std::string const& path) {
    std::set<PluginLocator> candidates = ListKnownModules();
    if (std::error_code none; std::filesystem::exists(path, none)) {
        std::filesystem::path const whole = vyncore::string::UTF16to8(MakeWholePath(path));
        std::vector<PluginLocator> vanished;
        auto const found = SearchModules({MakeWholePath(FindFolderToSearch(whole).string())}, vanished);
        candidates.insert(found.begin(), found.end());
    }
    std::erase_if(candidates, [&, folder = MakeWholePath(path)](PluginLocator const& module) {
        UString const name = vyncore::filesupport::File(module.GetPath()).GetName();
        return !IsBelow(module.GetPath(), folder) && name != UTF8to16(path);
    });
    return candidates;
}

bool IsText(std::string const& name) {
    return vyncore::string::UTF16to8(UTF8to16(name)) == name;
}

// The outermost ones, with their folders.
void FindNameless(UString const& folder, std::set<std::string>& nameless) {
    using std::filesystem::directory_options;
    std::error_code failed;
    std::filesystem::recursive_directory_iterator walk(vyncore::string::UTF16to8(folder),
                                                       directory_options::skip_permission_denied, failed);
    for (; !failed && walk != end(walk); walk.increment(failed)) {
        if (IsText(walk->path().filename().string()))
            continue;
        nameless.insert(walk->path().string());
        walk.disable_recursion_pending();
    }
}

} // namespace

UString MakeWholePath(std::string const& path) {
    std::error_code failed;
    std::filesystem::path whole = std::filesystem::absolute(path, failed).lexically_normal();
    if (!whole.has_filename() && whole.has_relative_path())
        whole = whole.parent_path();
    return UTF8to16(whole.string());
}

bool IsBelow(UString const& path, UString const& folder) {
    UString const start = folder.ends_with(u'/') ? folder : folder + u'/';
    return path == folder || path.compare(0, start.size(), start) == 0;
}

std::vector<UString> ListSearchedFolders(vynaudiofilterhost::PluginTechnology const& technology) {
    if (!technology.UsesDirectories() && technology.GetType() == vynaudiofilterhost::kTechnologyVST3)
        return os::GetVST3Folders();
    return {technology.DirectoryBegin(), technology.DirectoryEnd()};
}

void TellNamelessFiles(std::vector<UString> const& folders) {
    std::set<UString> searched(folders.begin(), folders.end());
    if (folders.empty()) {
        for (auto const& technology : PluginModuleInfoManager::GetInstance().GetPluginTechnologies()) {
            for (UString const& folder : ListSearchedFolders(*technology))
                searched.insert(folder);
        }
    }
    std::set<std::string> nameless;
    for (UString const& folder : searched)
        FindNameless(folder, nameless);
    if (!nameless.empty())
        std::fprintf(stderr, "vynhost: passed over, since the name is no UTF-8: %s%s\n",
                     OnOneLine(*nameless.begin()).c_str(),
                     nameless.size() > 1 ? (" and " + std::to_string(nameless.size() - 1) + " more").c_str() : "");
}

std::vector<PluginLocator> SearchModules(std::vector<UString> const& folders, std::vector<PluginLocator>& vanished) {
    auto const& inventory = PluginModuleInfoManager::GetInstance();
    if (folders.empty())
        return inventory.CollectPotentialPlugins(false, vanished);
    if (!os::ChooseVST3Folders(folders))
        throw CommandError::WrongUsage("folders with a colon in their names can't be searched");
    FolderChoice const choice(folders);
    return inventory.CollectPotentialPlugins(false, vanished);
}

std::vector<PluginLocator> FindModules(std::string const& module) {
    std::set<PluginLocator> modules = FindByPath(module);
    if (modules.empty()) {
        KnownFilters const filters = FindKnownFilters(module);
        for (auto const& filter : filters)
            modules.insert(filter->GetLocator());
        if (modules.size() > 1)
            ThrowAmbiguous(module, filters);
    }
    if (modules.empty())
        throw CommandError::OfPlugin(module, "there is no such module, and no plug-in of that name or ID is known");
    return {modules.begin(), modules.end()};
}

} // namespace vynhost
