#include "vynhost/PrivateConfiguration.h"

#include "vynhost/CommandError.h"
#include "vynhost/KnownFilters.h"
#include "vynhost/StoredFiles.h"

#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include <filesystem>
#include <system_error>

namespace vynhost {

using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;

namespace {

constexpr unsigned kVersion = 1;

} // namespace

vyncore::filesupport::File GetPrivateConfigurationFile() {
    return vyncore::filesupport::File(GetStoredFolder(), u"PrivatePlugins.xml");
}

std::optional<PrivateConfiguration> ReadPrivateConfiguration() {
    PropList list;
    unsigned version = 0;
    if (!LoadPropList(GetPrivateConfigurationFile().FullPath(), list, false) || !list.GetValue("version", version) ||
        version != kVersion)
        return std::nullopt;
    PrivateConfiguration configuration;
    list.GetValue("configuration", configuration.text);
    list.GetValue("vst3_directory", configuration.vst3Folder);
    list.GetValue("vst2_directory", configuration.vst2Folder);
    return configuration;
}

std::set<vynaudiofilterhost::PluginLocator> LoadPrivateConfiguration() {
    std::set<vynaudiofilterhost::PluginLocator> modules;
    if (auto const stored = ReadPrivateConfiguration()) {
        vynaudiofilterhost::utility::SetPrivatePluginConfig(stored->text, stored->vst3Folder, stored->vst2Folder);
        constexpr bool kKeepPrivateOut = false;
        vynaudiofilterhost::PluginModuleInfoManager::GetInstance().ClearAll(kKeepPrivateOut);
        for (auto const& filter : ListKnownFilters())
            modules.insert(filter->GetLocator());
    }
    return modules;
}

void SavePrivateConfiguration(std::optional<PrivateConfiguration> const& configuration) {
    if (!configuration) {
        std::string const path = vyncore::string::UTF16to8(GetPrivateConfigurationFile().FullPath());
        std::error_code failed;
        std::filesystem::remove(path, failed);
        if (failed)
            throw CommandError::OfFile(path, "cannot be removed: " + failed.message());
        return;
    }
    PropList list;
    list.SetValue("version", kVersion);
    list.SetValue("configuration", configuration->text);
    list.SetValue("vst3_directory", configuration->vst3Folder);
    list.SetValue("vst2_directory", configuration->vst2Folder);
    SaveText(GetPrivateConfigurationFile(), WritePropList(list));
}

} // namespace vynhost
