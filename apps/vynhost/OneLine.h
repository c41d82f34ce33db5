#pragma once

#include <string>

namespace vynhost {

/// The text with blanks in the place of every line break and every other control character, those beyond ASCII
/// included: texts of plug-ins and of the system, and the names of files, may hold any.
/// [any-thread]
std::string OnOneLine(std::string text);

} // namespace vynhost
