#include "vynhost/StoredFiles.h"

#include "vynhost/CommandError.h"
#include "vynhost/PrivateConfiguration.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/filesupport/FileDeleteException.h"
#include "vyncore/filesupport/SafeSave.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/strings/StringUtils.h"

#include "os/FileSystem.h"
#include "os/Memory.h"
#include "os/ReplacementFile.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::AudioFilterDescriptorManager;
using vynaudiofilterhost::BannedPluginManager;
using vynaudiofilterhost::PluginLocator;
using vynaudiofilterhost::PluginModuleInfoManager;
using vyncore::UString;
using vyncore::UTF8String;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;
using vyncore::string::UTF16to8;
using vyncore::string::UTF8to16;

namespace {

std::string NameOf(File const& file) {
    return UTF16to8(file.FullPath());
}

bool IsReadable(File const& file, unsigned version) {
    vyncore::proplist::PropList list;
    unsigned found = 0;
    return vyncore::proplist::utils::LoadPropList(file.FullPath(), list, false) && list.GetValue("version", found) &&
           found == version;
}

void SetAsideUnlessReadable(File const& file, unsigned version) {
    if (!file.Exists() || IsReadable(file, version))
        return;
    std::string const path = NameOf(file);
    std::error_code failed;
    std::filesystem::rename(path, path + ".unreadable", failed);
    if (failed)
        throw CommandError::OfFile(path, "cannot be read, nor be set aside: " + failed.message());
    std::fprintf(stderr, "vynhost: %s: cannot be read; it is kept as %s.unreadable\n", path.c_str(), path.c_str());
}

// Much is taken for a moment while a large file is read.
void ExpectSettings() {
    constexpr std::uintmax_t kLarge = 1 << 20;
    constexpr std::uintmax_t kTimes = 8;
    std::error_code failed;
    std::uintmax_t const size = std::filesystem::file_size(NameOf(GetSettingsFile()), failed);
    if (!failed && size >= kLarge)
        os::ExpectMemory(kTimes * size);
}

// The settings that are saved while a private configuration is in use hold its filters, but not its modules, so that
// nothing takes them out when it goes.
bool DropStrayFilters(std::set<PluginLocator> const& ownModules) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    std::vector<PluginLocator> strays;
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    for (auto filter = catalogue.InfoBegin(); filter != catalogue.InfoEnd(); ++filter) {
        PluginLocator const module = (*filter)->GetLocator();
        if (module.GetTechnologyType() != vynaudiofilterhost::kTechnologyInternal &&
            !inventory.FindPluginInfo(module) && !ownModules.contains(module))
            strays.push_back(module);
    }
    inventory.RemovePluginLocators(strays);
    return !strays.empty();
}

void MakeFolder(Dir const& folder) {
    std::string const path = UTF16to8(folder.FullPath());
    std::error_code failed;
    std::filesystem::create_directories(path, failed);
    if (failed)
        throw CommandError::OfFile(path, "cannot be made: " + failed.message());
}

} // namespace

Dir GetStoredFolder() {
    if (char const* const home = std::getenv("VYNHOST_HOME"); home && *home) {
        std::error_code failed;
        return Dir(UTF8to16(std::filesystem::absolute(home, failed).lexically_normal().string()));
    }
    Dir const settings = Dir::PrefDir();
    if (settings.FullPath().empty())
        throw CommandError::WrongUsage("there is no folder for the user's settings: set VYNHOST_HOME");
    return Dir(settings, u"vynhost");
}

File GetSettingsFile() {
    return File(GetStoredFolder(), PluginModuleInfoManager::GetInstance().GetSettingsFileName());
}

File GetBanFile() {
    return File(GetStoredFolder(), BannedPluginManager::GetInstance().GetSettingsFileName());
}

File GetUnsupportedFile() {
    return File(GetStoredFolder(), BannedPluginManager::GetInstance().GetPermanentBannedSettingsFileName());
}

File GetRecordsFile() {
    return File(GetStoredFolder(), u"ScanRecords.xml");
}

void LoadUnsupportedPlugins() {
    File file = GetUnsupportedFile();
    if (file.Exists() && !BannedPluginManager::GetInstance().LoadStaticConfiguration(file))
        std::fprintf(stderr, "vynhost: %s: is no list of plug-ins, and is ignored\n", NameOf(file).c_str());
}

void LoadBans() {
    File bans = GetBanFile();
    BannedPluginManager::GetInstance().LoadConfiguration(bans);
    LoadUnsupportedPlugins();
}

bool LoadStoredFiles() {
    ExpectSettings();
    LoadBans();
    std::set<PluginLocator> const ownModules = LoadPrivateConfiguration();
    PluginModuleInfoManager::GetInstance().LoadConfiguration(GetSettingsFile());
    return DropStrayFilters(ownModules);
}

void SaveText(File const& file, UTF8String const& text) {
    if (text.size() > vyncore::proplist::utils::kMostFileBytes)
        throw CommandError::OfFile(NameOf(file), "has grown too large to be saved; the old file is as it was");
    try {
        vyncore::filesupport::SafeSave save(file);
        if (!save.Write(text))
            throw CommandError::OfFile(NameOf(file), "could not be written; the old file is as it was");
        save.Commit();
    } catch (vyncore::filesupport::file_delete_exception const& error) {
        throw CommandError::OfFile(NameOf(file), error.what());
    }
}

void SaveSettings() {
    SaveText(GetSettingsFile(), PluginModuleInfoManager::GetInstance().GetConfigurationAsXML());
}

void SaveBans() {
    File file = GetBanFile();
    try {
        BannedPluginManager::GetInstance().SaveConfiguration(file);
    } catch (std::exception const& error) {
        throw CommandError::OfFile(NameOf(file), std::string(error.what()) + "; the old file is as it was");
    }
}

StoredFilesLock::StoredFilesLock() {
    Dir const folder = GetStoredFolder();
    MakeFolder(folder);
    File const file(folder, u"vynhost.lock");
    try {
        mLock.emplace(file.FullPath());
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(NameOf(file), error.what());
    }
    if (!mLock->IsHeld()) {
        std::string const holder =
            mLock->GetHolder() == 0 ? "" : " (process " + std::to_string(mLock->GetHolder()) + ")";
        throw CommandError::OfFile(UTF16to8(folder.FullPath()),
                                   "another vynhost" + holder +
                                       " is at work on the files there; try again when it is done");
    }
    os::ReplacementFile::RemoveAbandoned(folder.FullPath());
    SetAsideUnlessReadable(GetSettingsFile(), 2);
    SetAsideUnlessReadable(GetBanFile(), 1);
    SetAsideUnlessReadable(GetRecordsFile(), 1);
    SetAsideUnlessReadable(GetPrivateConfigurationFile(), 1);
}

} // namespace vynhost
