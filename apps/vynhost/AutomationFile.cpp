#include "vynhost/AutomationFile.h"

#include "vynhost/AutomationJSON.h"
#include "vynhost/CSVReader.h"
#include "vynhost/FoldedText.h"
#include "vynhost/InputFile.h"
#include "vynhost/NumberText.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vynhost {

namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20;
constexpr std::size_t kMostEntries = 1'000'000;

// Nearly four months; no audio file is longer.
constexpr double kMostSeconds = 1e7;

constexpr std::array<char const*, 3> kHeader{"seconds", "parameter", "value"};

} // namespace

AutomationFile::AutomationFile(std::string path) : mPath(std::move(path)) {
    std::string const bytes = ReadInputFile(mPath, kMostBytes);
    std::string_view text = bytes;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    std::string_view const trimmed = TrimBlanks(text);
    mIsJSON = trimmed.starts_with('[') || trimmed.starts_with('{');
    try {
        mIsJSON ? ReadArray(text) : ReadLines(text);
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(mPath, error.what());
    }
}

void AutomationFile::ReadLines(std::string_view text) {
    CSVReader reader(text);
    for (bool first = true; reader.Next(); first = false) {
        std::vector<std::string> const& fields = reader.GetFields();
        if (first && std::ranges::equal(fields, kHeader, {}, Fold, Fold))
            continue;
        if (fields.size() != kHeader.size())
            throw std::runtime_error(DescribePlace(reader.GetLine()) + "there are " + std::to_string(fields.size()) +
                                     " fields and not three: seconds,parameter,value");
        Add(reader.GetLine(), fields[0], fields[1], fields[2]);
    }
}

void AutomationFile::ReadArray(std::string_view text) {
    ReadAutomationJSON(text, [this](auto const&... parts) { Add(parts...); });
}

void AutomationFile::Add(std::int64_t place, std::string const& seconds, std::string const& parameter,
                         std::string const& value) {
    auto const refuse = [&](std::string const& reason) { throw std::runtime_error(DescribePlace(place) + reason); };
    if (mEntries.size() == kMostEntries)
        refuse("there are more than " + std::to_string(kMostEntries) + " points");
    auto const time = ReadNumber(seconds);
    if (!time)
        refuse('"' + seconds + "\" is no time in seconds");
    if (*time < 0.0 || *time > kMostSeconds)
        refuse("the time " + seconds + " is not within 0 and " + WriteNumber(kMostSeconds) + " seconds");
    mEntries.push_back({place, *time, parameter, value});
}

std::string AutomationFile::DescribePlace(std::int64_t place) const {
    return (mIsJSON ? "entry " : "line ") + std::to_string(place) + ": ";
}

CommandError AutomationFile::MakeError(AutomationEntry const& entry, ExitStatus status,
                                       std::string const& reason) const {
    return {status, CommandError::Subject::kFile, mPath, DescribePlace(entry.place) + reason};
}

} // namespace vynhost
