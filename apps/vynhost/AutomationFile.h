#pragma once

#include "vynhost/CommandError.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vynhost {

/// One point as it stands in an automation file. A plain record.
struct AutomationEntry {
    std::int64_t place = 0; ///< its line, or its number among the entries, counted from 1
    double seconds = 0.0;   ///< from the start of the rendering
    std::string parameter;  ///< a name or an index
    std::string value;      ///< as on the command line
};

/// Parameters' values over time, as a user wrote them down: lines of comma-separated values, "seconds,parameter,value",
/// or a JSON array of such triples, as arrays or as objects with these keys. What comes first in the file tells which.
/// It knows no plug-in.
class AutomationFile {
public:
    /// No file, and no entries.
    /// [any-thread]
    AutomationFile() = default;

    /// Reads the file. Throws CommandError, with the file and the place in it, for whatever is no such file.
    /// [main-thread]
    explicit AutomationFile(std::string path);

    /// In the file's order.
    /// [any-thread]
    std::vector<AutomationEntry> const& GetEntries() const noexcept { return mEntries; }

    /// That what an entry asks for can't be done.
    /// [any-thread]
    CommandError MakeError(AutomationEntry const& entry, ExitStatus status, std::string const& reason) const;

private:
    void ReadLines(std::string_view text);
    void ReadArray(std::string_view text);
    void Add(std::int64_t place, std::string const& seconds, std::string const& parameter, std::string const& value);
    std::string DescribePlace(std::int64_t place) const;

    std::string mPath;
    bool mIsJSON = false;
    std::vector<AutomationEntry> mEntries;
};

} // namespace vynhost
