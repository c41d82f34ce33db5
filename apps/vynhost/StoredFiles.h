#pragma once

#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include "os/FileLock.h"

#include <optional>

/// The files that the program keeps between its runs: what is known of plug-ins, what is banned. They lie in
/// $VYNHOST_HOME, or without that in a folder of the user's settings, under the names that the library proposes.
/// docs/formats.md describes them. All failures are CommandErrors that name the file.
namespace vynhost {

/// The folder, which need not exist.
/// [main-thread]
vyncore::filesupport::Dir GetStoredFolder();

/// The modules and filters that are known, and the folders to search: PluginModuleInfoManager's.
/// [main-thread]
vyncore::filesupport::File GetSettingsFile();
/// The dynamic ban list: BannedPluginManager's.
/// [main-thread]
vyncore::filesupport::File GetBanFile();
/// The static ban list: BannedPluginManager's, never written.
/// [main-thread]
vyncore::filesupport::File GetUnsupportedFile();
/// What the program remembers of modules beyond that: ScanRecords'.
/// [main-thread]
vyncore::filesupport::File GetRecordsFile();

/// Loads the static ban list into the library. Without a file it is empty.
/// [main-thread]
void LoadUnsupportedPlugins();

/// Loads both ban lists into the library.
/// [main-thread]
void LoadBans();

/// Loads both ban lists, the private configuration and the settings into the library. Filters of a private
/// configuration that is no longer in use stay out; returns whether the settings hold any of them.
/// [main-thread]
bool LoadStoredFiles();

/// Makes the text the content of the file, whole or not at all.
/// [any-thread]
void SaveText(vyncore::filesupport::File const& file, vyncore::UTF8String const& text);

/// Saves the library's modules, filters and folders.
/// [main-thread]
void SaveSettings();

/// Saves the library's dynamic ban list.
/// [main-thread]
void SaveBans();

/// The right to change the files. To be had before they are loaded, by whoever means to save them. A file that can't be
/// read is set aside then, under a name with ".unreadable" behind it, so that what is in it isn't overwritten.
class StoredFilesLock {
public:
    /// Makes the folder when it is missing. Throws CommandError when another process has the right, or when nothing can
    /// be written there.
    /// [main-thread]
    StoredFilesLock();

private:
    std::optional<os::FileLock> mLock;
};

} // namespace vynhost
