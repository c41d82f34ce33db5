#pragma once

#include <string>

namespace vynhost {

/// The text of a script: without a mark of the byte order, and with a comment for a first line that begins with "#!".
/// Throws CommandError for a file that can't be read, is empty or is larger than 16 MiB, and vynscripting::ScriptError
/// for one that is no UTF-8.
/// [any-thread]
std::string ReadScriptSource(std::string const& path);

} // namespace vynhost
