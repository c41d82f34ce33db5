#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/KnownModules.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/filesupport/FileDeleteException.h"
#include "vyncore/proplist/NumberedKeys.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include <stdexcept>
#include <string>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::UTF8String;
using vyncore::filesupport::File;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;

namespace {

constexpr unsigned kVersion = 2;

// Of another version nothing is taken, as if there were no file.
bool ReadFile(File const& file, PropList& list) {
    unsigned version = 0;
    return file.Exists() && LoadPropList(file.FullPath(), list, false) && list.GetValue("version", version) &&
           version == kVersion;
}

int ReadCount(PropList const& list, char const* key) {
    int count = 0;
    list.GetValue(key, count);
    return count;
}

PropList& MakeSection(PropList& list, char const* stem, std::size_t number) {
    return list.CreateList(stem + std::to_string(number));
}

} // namespace

void PluginModuleInfoManager::LoadConfiguration(File const& file) {
    PropList list;
    bool const loaded = ReadFile(file, list);
    if (loaded) {
        ReadDirectories(list);
        ReadPluginInfos(list, false);
    }
    auto& descriptors = AudioFilterDescriptorManager::GetInstance();
    descriptors.ReadExternalComponentDescriptors(mPrivateConfiguration, false);
    if (loaded)
        descriptors.ReadExternalComponentDescriptors(list, true);
    mPluginInfosChanged();
    if (!loaded && mModules->GetInfos().empty())
        ResetToDefaultFolders();
}

void PluginModuleInfoManager::ReadDirectories(PropList const& list) const {
    for (PropList const* const section : FindNumberedLists(list, "tech_info", ReadCount(list, "num_tech_infos"))) {
        auto const technology = GetPluginTechnology(static_cast<TechnologyType>(ReadCount(*section, "tech_type")));
        if (!technology)
            continue;
        technology->RemoveAllPluginDirectories();
        technology->AddPluginDirectories(
            FindNumberedTexts(*section, "directories", ReadCount(*section, "num_directories")));
    }
}

void PluginModuleInfoManager::ReadPluginInfos(PropList const& list, bool merge) {
    if (!merge)
        mModules->Clear();
    for (PropList const* const section : FindNumberedLists(list, "plugin_info", ReadCount(list, "num_plugin_infos")))
        mModules->Put(new PluginModuleInfo(*section));
}

void PluginModuleInfoManager::SaveConfiguration(File& file, bool withDirectories) const {
    PropList list;
    BuildConfigurationPropList(list, withDirectories);
    try {
        if (!SavePropList(file, list))
            throw std::runtime_error(vyncore::string::UTF16to8(file.FullPath()) + " could not be written");
    } catch (vyncore::filesupport::file_delete_exception const& error) {
        vyncore::debug::Trace(0, "PluginModuleInfoManager",
                              file.FullPath() + u" was not saved: " + vyncore::string::UTF8to16(error.what()));
    }
}

UTF8String PluginModuleInfoManager::GetConfigurationAsXML() const {
    PropList list;
    BuildConfigurationPropList(list, true);
    return WritePropList(list);
}

void PluginModuleInfoManager::BuildConfigurationPropList(PropList& list, bool withDirectories) const {
    list.SetValue("version", kVersion);
    if (withDirectories)
        WriteDirectories(list);
    WritePluginInfos(list);
    AudioFilterDescriptorManager::GetInstance().WriteExternalComponentDescriptors(list);
}

void PluginModuleInfoManager::WriteDirectories(PropList& list) const {
    list.SetValue("num_tech_infos", static_cast<int>(mTechnologies.size()));
    std::size_t number = 0;
    for (auto const& [type, technology] : mTechnologies) {
        PropList& section = MakeSection(list, "tech_info", number++);
        section.SetValue("tech_type", static_cast<int>(type));
        int count = 0;
        for (auto it = technology->DirectoryBegin(); it != technology->DirectoryEnd(); ++it)
            section.SetValue("directories" + std::to_string(count++), *it);
        section.SetValue("num_directories", count);
    }
}

void PluginModuleInfoManager::WritePluginInfos(PropList& list) const {
    auto const& infos = mModules->GetInfos();
    list.SetValue("num_plugin_infos", static_cast<int>(infos.size()));
    for (std::size_t number = 0; number < infos.size(); ++number)
        infos[number]->Write(MakeSection(list, "plugin_info", number));
}

void PluginModuleInfoManager::AddConfiguration(UTF8String const& xml, bool notify) {
    PropList list;
    ReadPropList(xml, list);
    ReadPluginInfos(list, true);
    AudioFilterDescriptorManager::GetInstance().ReadExternalComponentDescriptors(list, true);
    if (notify)
        mPluginInfosChanged();
}

void PluginModuleInfoManager::SetPrivatePluginConfiguration(UTF8String const& xml) {
    mPrivateConfiguration.Clear();
    ReadPropList(xml, mPrivateConfiguration);
}

} // namespace vynaudiofilterhost
