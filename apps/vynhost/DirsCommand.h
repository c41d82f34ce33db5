#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost dirs`.
struct DirsRequest {
    enum class Action { kList, kAdd, kRemove, kReset };

    Action action = Action::kList;
    std::vector<std::string> folders = {}; ///< to add or remove
    bool json = false;
};

/// Changes the folders that are searched for plug-ins, if asked to, and returns them to be printed. Modules in a folder
/// that is removed are forgotten. Throws CommandError; then nothing has changed.
/// [main-thread]
std::string RunDirs(DirsRequest const& request);

} // namespace vynhost
