#pragma once

#include "vynhost/ScriptCommand.h"

#include <span>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vynhost {

/// Adds `script` to the command line. Parsing fills the request, which must outlive that.
/// [main-thread]
void DeclareScript(CLI::App& app, ScriptRequest& request);

/// What of the program's arguments is its own: for `script` what stands in front of "--", for all else everything.
/// [any-thread]
std::span<char*> TakeOwnArguments(std::span<char*> all);

} // namespace vynhost
