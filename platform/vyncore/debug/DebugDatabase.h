#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <functional>
#include <map>
#include <mutex>
#include <string_view>

namespace vyncore::debug {

/// Debug settings by key, each a text. One per process, held in memory alone: an application that wants them kept sets
/// them at its start. Lives to the end of the process, past every static object.
///
/// A truth is kept as "true" or "false", and a text other than "true" is read as false.
class VYN_API DebugDatabase {
public:
    /// The database of the process.
    /// [any-thread]
    static DebugDatabase& Get();

    /// The same as Get.
    /// [any-thread]
    static DebugDatabase& Instance() { return Get(); }

    DebugDatabase(DebugDatabase const&) = delete;
    DebugDatabase& operator=(DebugDatabase const&) = delete;

    /// The text of a key, or the default when there is none.
    /// [any-thread]
    UTF8String GetEntry(std::string_view key, std::string_view defaultText) const;

    /// [any-thread]
    void SetEntry(std::string_view key, std::string_view text);

    /// Takes a key out, so that defaults hold again.
    /// [any-thread]
    void RemoveEntry(std::string_view key);

    /// Whether the text of the key is "true"; the default when there is no such key.
    /// [any-thread]
    bool GetBool(std::string_view key, bool defaultValue) const;

    /// The number that the text of the key starts with; the default when there is no such key or no number in it.
    /// [any-thread]
    int GetInt(std::string_view key, int defaultValue) const;

    /// GetEntry in UTF-16.
    /// [any-thread]
    UString GetString(std::string_view key, UString const& defaultValue) const;

    /// [any-thread]
    void SetBool(std::string_view key, bool value);

    /// [any-thread]
    void SetInt(std::string_view key, int value);

    /// [any-thread]
    void SetString(std::string_view key, UString const& value);

private:
    DebugDatabase() = default;
    ~DebugDatabase() = default;

    mutable std::mutex mMutex;
    std::map<UTF8String, UTF8String, std::less<>> mEntries;
};

} // namespace vyncore::debug
