#pragma once

#include "vynhost/PluginFacts.h"

#include <string>

namespace vynhost {

/// One JSON document, with a line break behind it. What the library can't tell is null.
/// [any-thread]
std::string FormatJSON(PluginFacts const& facts);

/// A table for a person.
/// [main-thread]
std::string FormatTable(PluginFacts const& facts);

} // namespace vynhost
