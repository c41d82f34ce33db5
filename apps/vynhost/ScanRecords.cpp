#include "vynhost/ScanRecords.h"

#include "vyncore/filesupport/CompareFileNames.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <string_view>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::PluginLocator;
using vyncore::UString;
using vyncore::UTF8String;
using vyncore::proplist::PropList;
using State = ScanRecord::State;

namespace {

constexpr unsigned kVersion = 1;

constexpr std::array kStates{
    std::pair(State::kOpening, "opening"),
    std::pair(State::kFiled, "filed"),
    std::pair(State::kRefused, "refused"),
    std::pair(State::kBanned, "banned"),
    std::pair(State::kBannedByUser, "banned by user"),
};

UTF8String NameOf(State state) {
    return std::ranges::find(kStates, state, [](auto const& pair) { return pair.first; })->second;
}

std::optional<State> StateOf(UTF8String const& name) {
    auto const found = std::ranges::find(kStates, name, [](auto const& pair) { return std::string_view(pair.second); });
    return found != kStates.end() ? std::optional(found->first) : std::nullopt;
}

// Locators compare in the same way, and take many times as long.
UTF8String KeyOf(PluginLocator const& module) {
    return UTF8String(std::to_string(module.GetTechnologyType())) + ':' +
           vyncore::filesupport::FileNameKey(module.GetPath());
}

// A property list has no number of 64 bits.
template <class Number>
void WriteLong(PropList& list, char const* key, Number number) {
    list.SetValue(key, UTF8String(std::to_string(number)));
}

template <class Number>
bool ReadLong(PropList const& list, char const* key, Number& number) {
    UTF8String text;
    if (!list.GetValue(key, text))
        return false;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

void Write(PropList& list, PluginLocator const& module, ScanRecord const& record) {
    list.SetValue("locator", module.ToString());
    list.SetValue("state", NameOf(record.state));
    list.SetValue("reason", UTF8String(record.reason));
    list.SetValue("tries", record.tries);
    list.SetValue("seconds", static_cast<float>(record.seconds));
    WriteLong(list, "time", record.time);
    WriteLong(list, "size", record.stamp.size);
    WriteLong(list, "changed", record.stamp.changed);
    WriteLong(list, "altered", record.stamp.altered);
    WriteLong(list, "object", record.stamp.object);
    list.SetValue("num_filters", static_cast<int>(record.filters.size()));
    for (std::size_t number = 0; number < record.filters.size(); ++number)
        list.SetValue("filter" + std::to_string(number), UTF8String(record.filters[number]));
}

void ReadFilters(PropList const& list, ScanRecord& record) {
    int count = 0;
    list.GetValue("num_filters", count);
    // A count may be anything; what is there has no gaps.
    for (int number = 0; number < count; ++number) {
        UTF8String id;
        if (!list.GetValue("filter" + std::to_string(number), id))
            break;
        record.filters.push_back(id);
    }
}

// Empty for what a program of another version, or a hand, has left incomplete: the module is looked at anew.
std::optional<ScanRecord> ReadRecord(PropList const& list) {
    ScanRecord record;
    UTF8String name;
    list.GetValue("state", name);
    std::optional<State> const state = StateOf(name);
    if (!state || !ReadLong(list, "size", record.stamp.size) || !ReadLong(list, "changed", record.stamp.changed))
        return std::nullopt;
    record.state = *state;
    float seconds = 0.0f;
    list.GetValue("seconds", seconds);
    record.seconds = static_cast<double>(seconds);
    list.GetValue("reason", record.reason);
    list.GetValue("tries", record.tries);
    ReadLong(list, "time", record.time);
    // Without these two, which former versions didn't keep, the file passes for another one and is looked at anew.
    ReadLong(list, "altered", record.stamp.altered);
    ReadLong(list, "object", record.stamp.object);
    ReadFilters(list, record);
    return record;
}

} // namespace

void ScanRecords::Load(vyncore::filesupport::File const& file) {
    mRecords.clear();
    PropList list;
    unsigned version = 0;
    if (!vyncore::proplist::utils::LoadPropList(file.FullPath(), list, false) || !list.GetValue("version", version) ||
        version != kVersion)
        return;
    for (UTF8String const& name : list.GetListNames()) {
        PropList const& section = *list.FindList(name);
        UString locator;
        section.GetValue("locator", locator);
        PluginLocator module;
        module.FromString(locator);
        if (std::optional<ScanRecord> record = ReadRecord(section); record && !module.GetPath().empty())
            Put(module, std::move(*record));
    }
}

UTF8String ScanRecords::GetText() const {
    PropList list;
    list.SetValue("version", kVersion);
    list.SetValue("num_records", static_cast<int>(mRecords.size()));
    std::size_t number = 0;
    for (auto const& [key, entry] : mRecords)
        Write(list.CreateList("record" + std::to_string(number++)), entry.module, entry.record);
    return vyncore::proplist::utils::WritePropList(list);
}

ScanRecord const* ScanRecords::Find(PluginLocator const& module) const {
    auto const found = mRecords.find(KeyOf(module));
    return found != mRecords.end() ? &found->second.record : nullptr;
}

void ScanRecords::Put(PluginLocator const& module, ScanRecord record) {
    mRecords.insert_or_assign(KeyOf(module), Entry{module, std::move(record)});
}

void ScanRecords::Forget(PluginLocator const& module) {
    mRecords.erase(KeyOf(module));
}

bool HasChanged(PluginLocator const& module, ScanRecord const& record) {
    std::optional<os::FileStamp> const stamp = os::GetFileStamp(module.GetPath());
    return stamp && *stamp != record.stamp;
}

std::string DescribeBan(ScanRecord const* record) {
    if (!record)
        return "";
    if (record->state == State::kBannedByUser && record->reason.empty())
        return "was banned by the user";
    if (record->state == State::kOpening && record->tries < kMostScanTries)
        return "was open when a scan was ended from outside; the next one tries it once more";
    return record->state == State::kOpening ? "was open each time when scans were ended from outside" : record->reason;
}

std::int64_t GetUnixTime() {
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

} // namespace vynhost
