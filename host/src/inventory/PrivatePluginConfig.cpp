#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"

#include "os/FileContent.h"
#include "os/PluginFolders.h"
#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/filesupport/SafeSave.h"
#include "vyncore/filesupport/StdPath.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/xml/Encoding.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace vynaudiofilterhost::utility {

using vyncore::UString;
using vyncore::UTF8String;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;

namespace {

struct Substitution {
    std::u16string_view placeholder;
    UString text;
};

using Substitutions = std::vector<Substitution>;

// In XML source a path stands encoded.
Substitutions SubstitutionsForVST3(UString const& directory) {
    return {{u"@VST3PRIVATEAPPLICATIONPLUGINPATH", vyncore::xml::utils::EncodeReservedCharacters(directory)},
            {u"@VST3PLUGINEXTENSION", u"vst3"}};
}

Substitutions SubstitutionsForVST2(UString const& directory) {
    return {{u"@PRIVATEAPPLICATIONPLUGINPATH", vyncore::xml::utils::EncodeReservedCharacters(directory)},
            {u"@PLUGINEXTENSION", os::GetModuleExtension().substr(1)}};
}

UString ReplaceAll(std::u16string_view text, std::u16string_view from, std::u16string_view to) {
    UString replaced;
    for (std::size_t at = text.find(from); at != std::u16string_view::npos; at = text.find(from)) {
        replaced += text.substr(0, at);
        replaced += to;
        text.remove_prefix(at + from.size());
    }
    replaced += text;
    return replaced;
}

void PutPlaceholders(UString& text, Substitutions const& substitutions) {
    for (auto const& [placeholder, what] : substitutions)
        text = ReplaceAll(text, what, placeholder);
}

void FillPlaceholders(UString& text, Substitutions const& substitutions) {
    for (auto const& [placeholder, what] : substitutions)
        text = ReplaceAll(text, placeholder, what);
}

// What the paths of the modules in it begin with, so that it is found in the text; and no path that a change of the
// working directory would lead elsewhere is worth storing.
UString WholePath(UString const& directory) {
    if (directory.empty())
        return UString();
    std::filesystem::path path = std::filesystem::absolute(vyncore::filesupport::ToStdPath(directory));
    path = path.lexically_normal();
    return vyncore::filesupport::FromStdPath(path.has_filename() ? path : path.parent_path());
}

void ListModules(TechnologyType technology, UString const& directory, ModuleFileKind const& kind,
                 std::vector<PluginLocator>& modules) {
    for (UString const& path : FindModuleFiles({directory}, kind))
        modules.emplace_back(technology, path);
}

void Scan(UString const& vst2Directory, UString const& vst3Directory) {
    std::vector<PluginLocator> modules;
    ListModules(kTechnologyVST, vst2Directory, {.extension = os::GetModuleExtension()}, modules);
    ListModules(kTechnologyVST3, vst3Directory, {.extension = u".vst3", .inBundles = true}, modules);
    if (modules.empty())
        return;
    constexpr bool kOpenShells = false;
    constexpr bool kWithoutInstances = true;
    constexpr bool kInternalFilters = true;
    boost::intrusive_ptr<PluginModuleScanner> const scanner(
        new PluginModuleScanner(modules, kOpenShells, kWithoutInstances, kInternalFilters));
    scanner->BeginScan();
    PluginLocator locator;
    UString detail;
    int current = 0;
    int total = 0;
    while (scanner->GetCurrentProgressInfo(locator, detail, current, total))
        scanner->ContinueScan();
}

void WriteResult(UString const& path, UString const& text) {
    vyncore::filesupport::SafeSave result{File(path)};
    if (!result.Write(vyncore::string::UTF16to8(text)))
        throw std::runtime_error("the result file can't be written");
    result.Commit();
}

void BuildFromEmptyInventory(UString const& resultFile, UString const& vst2Directory, UString const& vst3Directory) {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    Scan(vst2Directory, vst3Directory);
    UTF8String const configuration = inventory.GetConfigurationAsXML();
    UString text = vyncore::string::UTF8to16(configuration);
    if (!vst3Directory.empty())
        PutPlaceholders(text, SubstitutionsForVST3(vst3Directory));
    if (!vst2Directory.empty())
        PutPlaceholders(text, SubstitutionsForVST2(vst2Directory));
    WriteResult(resultFile, text);
    inventory.SetPrivatePluginConfiguration(configuration);
}

void LoadSettingsFile() {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    inventory.LoadConfiguration(File(Dir::PrefDir(), inventory.GetSettingsFileName()));
}

} // namespace

void BuildPrivatePluginConfig(UString const& resultFile, UString const& vst2Directory, UString const& vst3Directory) {
    PluginModuleInfoManager::GetInstance().ClearAll(true);
    try {
        BuildFromEmptyInventory(resultFile, WholePath(vst2Directory), WholePath(vst3Directory));
    } catch (...) {
        LoadSettingsFile();
        throw;
    }
    LoadSettingsFile();
}

void SetPrivatePluginConfig(UString const& configurationText, UString const& vst3Directory,
                            UString const& vst2Directory) {
    if (configurationText.empty())
        return;
    UString text = configurationText;
    FillPlaceholders(text, SubstitutionsForVST3(vst3Directory));
    FillPlaceholders(text, SubstitutionsForVST2(vst2Directory));
    PluginModuleInfoManager::GetInstance().SetPrivatePluginConfiguration(vyncore::string::UTF16to8(text));
}

void SetPrivatePluginConfigFromFile(UString const& filePath, UString const& vst3Directory,
                                    UString const& vst2Directory) {
    std::optional<std::string> const bytes = os::ReadFileContent(filePath, vyncore::proplist::utils::kMostFileBytes);
    if (bytes)
        SetPrivatePluginConfig(vyncore::string::UTF8to16(*bytes), vst3Directory, vst2Directory);
}

} // namespace vynaudiofilterhost::utility
