#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include "os/FileSystem.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// What is remembered of a module beside the inventory and the ban list.
struct ScanRecord {
    enum class State {
        kOpening,      ///< to be looked at by a scan that is under way; on the ban list while that is done
        kFiled,        ///< in the inventory
        kRefused,      ///< nothing to file
        kBanned,       ///< on the ban list, on account of what it did in a scan
        kBannedByUser, ///< on the ban list, until the user takes it off
    };

    State state = State::kOpening;
    std::string reason = {};               ///< for a person; empty when there is nothing to say
    os::FileStamp stamp = {};              ///< of the file that this was found out of
    std::int64_t time = 0;                 ///< of finding it out, in seconds since 1970
    double seconds = 0.0;                  ///< how long that took
    int tries = 0;                         ///< of kOpening: scans that were at it, this one included
    std::vector<std::string> filters = {}; ///< unique IDs
};

/// The records of all modules that were looked at, and the file they are stored in. A value. docs/formats.md describes
/// the file.
class ScanRecords {
public:
    struct Entry {
        vynaudiofilterhost::PluginLocator module;
        ScanRecord record;
    };
    using Map = std::map<vyncore::UTF8String, Entry>;

    /// Without a file, or with one that is of another version or no property list, there are no records.
    /// [main-thread]
    void Load(vyncore::filesupport::File const& file);

    /// The content of the file.
    /// [main-thread]
    vyncore::UTF8String GetText() const;

    /// Null when there is none.
    /// [main-thread]
    ScanRecord const* Find(vynaudiofilterhost::PluginLocator const& module) const;

    /// Puts the record in the place of what was remembered of the module.
    /// [main-thread]
    void Put(vynaudiofilterhost::PluginLocator const& module, ScanRecord record);

    /// [main-thread]
    void Forget(vynaudiofilterhost::PluginLocator const& module);

    /// By keys that say nothing to anybody else.
    /// [main-thread]
    Map const& GetAll() const noexcept { return mRecords; }

private:
    Map mRecords;
};

/// Whether the module's file is there and another one than the record tells of.
/// [any-thread]
bool HasChanged(vynaudiofilterhost::PluginLocator const& module, ScanRecord const& record);

/// Why a module is banned, for a person; goes on after "it ". Empty when nothing is known of it.
/// @param record  null when there is none
/// [any-thread]
std::string DescribeBan(ScanRecord const* record);

/// How many scans may be ended from outside over a module before that is put to it.
inline constexpr int kMostScanTries = 2;

/// The time of day in seconds since 1970.
/// [any-thread]
std::int64_t GetUnixTime();

} // namespace vynhost
