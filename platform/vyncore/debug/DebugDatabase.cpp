#include "vyncore/debug/DebugDatabase.h"

#include "vyncore/strings/StringUtils.h"

#include <string>

namespace vyncore::debug {

DebugDatabase& DebugDatabase::Get() {
    static DebugDatabase& database = *new DebugDatabase;
    return database;
}

UTF8String DebugDatabase::GetEntry(std::string_view key, std::string_view defaultText) const {
    std::lock_guard const lock(mMutex);
    auto const found = mEntries.find(key);
    return found == mEntries.end() ? UTF8String(defaultText) : found->second;
}

void DebugDatabase::SetEntry(std::string_view key, std::string_view text) {
    std::lock_guard const lock(mMutex);
    mEntries.insert_or_assign(UTF8String(key), UTF8String(text));
}

void DebugDatabase::RemoveEntry(std::string_view key) {
    std::lock_guard const lock(mMutex);
    if (auto const found = mEntries.find(key); found != mEntries.end())
        mEntries.erase(found);
}

bool DebugDatabase::GetBool(std::string_view key, bool defaultValue) const {
    return GetEntry(key, defaultValue ? "true" : "false") == "true";
}

int DebugDatabase::GetInt(std::string_view key, int defaultValue) const {
    int value = 0;
    return string::StringToNumber(string::UTF8to16(GetEntry(key, "")), value) ? value : defaultValue;
}

UString DebugDatabase::GetString(std::string_view key, UString const& defaultValue) const {
    return string::UTF8to16(GetEntry(key, string::UTF16to8(defaultValue)));
}

void DebugDatabase::SetBool(std::string_view key, bool value) {
    SetEntry(key, value ? "true" : "false");
}

void DebugDatabase::SetInt(std::string_view key, int value) {
    SetEntry(key, std::to_string(value));
}

void DebugDatabase::SetString(std::string_view key, UString const& value) {
    SetEntry(key, string::UTF16to8(value));
}

} // namespace vyncore::debug
