#pragma once

#include <string>

namespace vynhost {

/// The text of a script, told to be none before any plug-in is opened for it. Throws CommandError for a file that can't
/// be read, is empty or is larger than 16 MiB, and vynscripting::ScriptError for one that is no UTF-8.
/// [any-thread]
std::string ReadScriptSource(std::string const& path);

} // namespace vynhost
