#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/inventory/PluginTechnology.h"
#include "vyncore/Export.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"

#include <boost/signals2/signal.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <map>
#include <memory>
#include <vector>

namespace vynaudiofilterhost {

class KnownModules;

/// What is known of plug-ins on this machine: the formats, the folders of each, and the modules that were scanned, with
/// the user's word on each. One per process, made on first use. Together with the catalogue
/// (AudioFilterDescriptorManager) it is stored in one file, which the application names and loads and saves when it
/// likes; nothing is loaded or saved unasked. docs/formats.md describes the file.
///
/// 1. A module is known once at most. Modules stand in the order of adding, which is that of the file; a module that
///    comes again goes to the end.
/// 2. A module and the descriptors of its filters belong together by the locator alone: taking a module out takes them
///    out, disabling it leaves them as they are. A filter is created only if both are enabled.
/// 3. A slot of the signal runs inside the operation that fires it, as the last thing that it does; but for a first
///    start (LoadConfiguration), which then sets the folders, if there is still no module.
///
/// What it costs to find, add or take out a module depends little on how many there are.
class VYN_API PluginModuleInfoManager {
public:
    using InfoPointer = boost::intrusive_ptr<PluginModuleInfo>;
    using InfoIterator = std::vector<InfoPointer>::const_iterator;
    using TechnologyPointer = boost::intrusive_ptr<PluginTechnology>;
    using PluginInfosChangedSignal = boost::signals2::signal<void()>;

    /// [main-thread]
    static PluginModuleInfoManager& GetInstance();

    PluginModuleInfoManager(PluginModuleInfoManager const&) = delete;
    PluginModuleInfoManager& operator=(PluginModuleInfoManager const&) = delete;

    /// The first technology of a type stays. Null is ignored.
    /// [main-thread]
    void AddPluginTechnology(TechnologyPointer technology);
    /// Null when there is none of that type.
    /// [main-thread]
    TechnologyPointer GetPluginTechnology(TechnologyType type) const;
    /// In the order of their types.
    /// [main-thread]
    std::vector<TechnologyPointer> GetPluginTechnologies() const;
    /// PluginTechnology::ResetDirectoriesToDefault for each, in the order of their types.
    /// [main-thread]
    void ResetToDefaultFolders();

    /// Adds a module behind all others, in the place of what was known of it, and fires the signal. Null is ignored.
    /// [main-thread]
    void AddPluginModuleInfo(InfoPointer info);
    /// Null when the module isn't known.
    /// [main-thread]
    InfoPointer FindPluginInfo(PluginLocator locator) const;
    /// All modules, in the order of their locators.
    /// [main-thread]
    std::vector<PluginLocator> GetPluginLocators() const;
    /// The enabled ones, in the order of their locators.
    /// [main-thread]
    std::vector<PluginLocator> GetEnabledPlugins() const;
    /// All modules, in the order of adding. The iterators hold until a module is added or taken out.
    /// [main-thread]
    InfoIterator PluginInfoBegin() const;
    InfoIterator PluginInfoEnd() const;
    /// What the user said of the module; of one that isn't known, the opposite of `unknownIsDisabled`.
    /// [main-thread]
    bool IsPluginEnabled(PluginLocator const& locator, bool unknownIsDisabled) const;
    /// Nothing for a module that isn't known. Doesn't fire the signal.
    /// [main-thread]
    void SetPluginEnabled(PluginLocator const& locator, bool enabled);
    /// The module's path as its technology shows it to a user; the plain path when that has nothing to show or isn't
    /// there.
    /// [main-thread]
    vyncore::UString GetDisplayStringForLocator(PluginLocator const& locator) const;

    /// The modules on the disk, as all technologies find them now, in the order of their types.
    /// @param onlyUnknown  leaves out the ones that are known
    /// @param vanished  becomes the modules that are known and were not found, in the order of their locators: their
    ///                  files are gone, or they were banned, or their folder is none of the user's any more
    /// [main-thread]
    std::vector<PluginLocator> CollectPotentialPlugins(bool onlyUnknown, std::vector<PluginLocator>& vanished) const;
    /// Takes out the modules and the descriptors of their filters, also of modules that only descriptors tell of. Fires
    /// the signal, once, when anything has changed.
    /// [main-thread]
    void RemovePluginLocators(std::vector<PluginLocator> const& locators);
    /// Takes out all modules and all descriptors of plug-ins. The folders stay. Doesn't fire the signal.
    /// @param keepPrivateOut  false: the descriptors of the private configuration come in
    /// [main-thread]
    void ClearAll(bool keepPrivateOut);

    /// Makes modules, descriptors and folders what the file holds; descriptors of the private configuration come before
    /// it. A technology of which the file says nothing keeps its folders. Without a file, or with one that isn't of
    /// this version or no property list, the modules stay, the descriptors become those of the private configuration,
    /// and, while no module is known, the folders become the default ones. Fires the signal, once; technologies fire
    /// theirs.
    /// [main-thread]
    void LoadConfiguration(vyncore::filesupport::File const& file);
    /// Stores modules and descriptors, and the folders if asked to, whole or not at all. An old file that can't be
    /// replaced stays; that is traced at level 0 and no error. Throws std::runtime_error when the new one can't be
    /// written, std::length_error when there is more than a stored property list holds.
    /// [main-thread]
    void SaveConfiguration(vyncore::filesupport::File& file, bool withDirectories) const;
    /// What SaveConfiguration would store, folders included.
    /// [main-thread]
    vyncore::UTF8String GetConfigurationAsXML() const;
    /// Takes in the modules of such a text, in the place of what was known of them, and those of its descriptors whose
    /// IDs are not in the catalogue. Its folders and its version don't count; a text that is no property list holds
    /// nothing.
    /// @param notify  whether to fire the signal
    /// [main-thread]
    void AddConfiguration(vyncore::UTF8String const& xml, bool notify);
    /// The application's own set of plug-ins, as such a text: its descriptors come in with the next LoadConfiguration
    /// or ClearAll and win over those of the file. A text that is no property list holds nothing.
    /// [main-thread]
    void SetPrivatePluginConfiguration(vyncore::UTF8String const& xml);

    /// A name for the file, for whoever makes its path; "AudioPluginManagerSettings.xml" unless another was set.
    /// [main-thread]
    void SetSettingsFileName(vyncore::UString const& name) { mSettingsFileName = name; }
    vyncore::UString GetSettingsFileName() const { return mSettingsFileName; }

    /// Fired when modules came or went: by AddPluginModuleInfo, LoadConfiguration, AddConfiguration and
    /// RemovePluginLocators.
    /// [main-thread]
    PluginInfosChangedSignal& GetPluginInfosChangedSignal() noexcept { return mPluginInfosChanged; }

private:
    PluginModuleInfoManager();
    ~PluginModuleInfoManager();

    void ReadDirectories(vyncore::proplist::PropList const& list) const;
    void ReadPluginInfos(vyncore::proplist::PropList const& list, bool merge);
    void WriteDirectories(vyncore::proplist::PropList& list) const;
    void WritePluginInfos(vyncore::proplist::PropList& list) const;
    void BuildConfigurationPropList(vyncore::proplist::PropList& list, bool withDirectories) const;

    std::map<TechnologyType, TechnologyPointer> mTechnologies;
    std::unique_ptr<KnownModules> const mModules;
    PluginInfosChangedSignal mPluginInfosChanged;
    vyncore::proplist::PropList mPrivateConfiguration;
    vyncore::UString mSettingsFileName = u"AudioPluginManagerSettings.xml";
};

} // namespace vynaudiofilterhost
