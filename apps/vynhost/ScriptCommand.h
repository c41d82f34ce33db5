#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost script`.
struct ScriptRequest {
    std::optional<std::string> path;      ///< of the script; there is one unless it lists
    std::optional<std::string> plugin;    ///< that is open when the script begins
    std::string classID = {};             ///< empty when the module's only class is meant
    std::vector<std::string> arguments{}; ///< for the script
    double timeoutSeconds = 0.0;          ///< 0: none
    int memoryMiB = 256;                  ///< of all that the script holds at a time
    bool json = false;
    bool lists = false;    ///< tells what scripts can use, and runs none
    bool markdown = false; ///< tells it as docs/scripting.md has it
};

/// Runs a script, or lists the script interface; returns the text to be printed behind what the script has printed
/// itself. With JSON that is one document, {"printed": [line…], "result": value}, of which `result` is what the last
/// statement of the script gives. Throws CommandError, and FailedReport for a script that fails with JSON:
/// {"error", "file", "line", "stack": [call…], "printed": [line…]}.
/// [main-thread]
std::string RunScript(ScriptRequest const& request);

} // namespace vynhost
