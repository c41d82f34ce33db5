#pragma once

#include <string>

namespace vynhost {

/// Lists the filters that are known; returns the text to be printed. Throws CommandError.
/// [main-thread]
std::string RunList(bool json);

} // namespace vynhost
