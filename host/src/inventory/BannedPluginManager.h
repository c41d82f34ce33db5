#pragma once

#include "vynaudiofilterhost/inventory/HashSlots.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/UnsupportedPlugins.h"
#include "vyncore/Export.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include <cstddef>
#include <set>

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// The plug-ins that the library leaves alone, in two lists. One per process, made on first use; both lists are empty
/// until the application fills them, which alone adds, removes, loads and saves.
///
/// 1. The dynamic list names modules by their locators. They are never candidates of a scan, and so never loaded.
/// 2. The static list names files that are not supported, and is only ever read. A module on it yields no module info:
///    its ID and version are known only after it has been opened.
class VYN_API BannedPluginManager {
public:
    using BannedIterator = std::set<PluginLocator>::const_iterator;

    /// [main-thread]
    static BannedPluginManager& GetInstance();

    BannedPluginManager(BannedPluginManager const&) = delete;
    BannedPluginManager& operator=(BannedPluginManager const&) = delete;

    /// Puts the module on the dynamic list, if it isn't there.
    /// [main-thread]
    void AddBannedPlugin(PluginLocator const& locator);
    /// Takes it off, if it is there.
    /// [main-thread]
    void RemoveBannedPlugin(PluginLocator const& locator);
    /// Whether the dynamic list has the module; its path compares as the file system compares names.
    /// [main-thread]
    bool IsPluginBanned(PluginLocator const& locator) const;
    /// The dynamic list, in the order of the locators. The iterators hold while what they stand on is there.
    /// [main-thread]
    BannedIterator BannedBegin() const noexcept { return mBanned.begin(); }
    BannedIterator BannedEnd() const noexcept { return mBanned.end(); }

    /// Makes the dynamic list what the file holds. Without a file, or with one that isn't of this version or no
    /// property list, the list stays. docs/formats.md describes the file.
    /// [main-thread]
    void LoadConfiguration(vyncore::filesupport::File& file);
    /// Stores the dynamic list, whole or not at all. Throws vyncore::filesupport::file_delete_exception when the old
    /// file can't be replaced, std::length_error when there is more than a stored property list holds, and
    /// std::runtime_error when the new one can't be written.
    /// [main-thread]
    void SaveConfiguration(vyncore::filesupport::File& file) const;

    /// Makes the static list what the file holds. False when there is no file or it is no XML, whole; then the list
    /// stays. Never throws. docs/formats.md describes the file.
    /// [main-thread]
    bool LoadStaticConfiguration(vyncore::filesupport::File& file);
    /// Whether an entry of the static list has that file name (without folders) and, as far as it names them, that ID
    /// and version. The case of ASCII letters doesn't count.
    /// [main-thread]
    bool IsPluginBannedStatically(vyncore::UString const& fileName, vyncore::UString const& uniqueID,
                                  vyncore::UString const& version) const;

    /// Names for the two files, for whoever makes their paths; "DynamicAudioPlugInBlacklist.xml" and
    /// "PermanentAudioPlugInBlacklist.xml" unless others were set.
    /// [main-thread]
    void SetSettingsFileName(vyncore::UString const& name) { mSettingsFileName = name; }
    vyncore::UString GetSettingsFileName() const { return mSettingsFileName; }
    void SetPermanentBannedSettingsFileName(vyncore::UString const& name) { mPermanentSettingsFileName = name; }
    vyncore::UString GetPermanentBannedSettingsFileName() const { return mPermanentSettingsFileName; }

private:
    BannedPluginManager();
    ~BannedPluginManager();

    PluginLocator const* FindBanned(PluginLocator const& locator, std::size_t hash) const;
    void ReadBannedPlugins(vyncore::proplist::PropList const& list);
    void WriteBannedPlugins(vyncore::proplist::PropList& list) const;

    std::set<PluginLocator> mBanned;
    HashSlots<PluginLocator const*> mBannedByFile; ///< the same ones
    UnsupportedPlugins mUnsupported;
    vyncore::UString mSettingsFileName = u"DynamicAudioPlugInBlacklist.xml";
    vyncore::UString mPermanentSettingsFileName = u"PermanentAudioPlugInBlacklist.xml";
};

} // namespace vynaudiofilterhost
