#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vynhost {

/// Takes one entry: its number, counted from 1, and its three parts, numbers as they are written in JSON.
using AutomationEntryTaker = std::function<void(std::int64_t entry, std::string const& seconds,
                                                std::string const& parameter, std::string const& value)>;

/// Reads a JSON array of entries, each [seconds, parameter, value] or an object with these keys, and hands them over
/// one by one: it never holds more than one. Throws std::runtime_error, with the place, for any other text, and what
/// `take` throws.
/// [any-thread]
void ReadAutomationJSON(std::string_view text, AutomationEntryTaker const& take);

} // namespace vynhost
