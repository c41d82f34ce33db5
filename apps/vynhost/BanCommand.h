#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost ban`.
struct BanRequest {
    enum class Action { kList, kAdd, kRemove };

    Action action = Action::kList;
    std::vector<std::string> modules = {}; ///< to add or remove, as FindModules takes them
    std::string reason = {};               ///< of those that are added; may be empty
    bool json = false;
};

/// Changes the dynamic ban list, if asked to, and returns the ban lists to be printed. A module that is added is
/// forgotten, and stays banned whatever becomes of its file; one that is removed is looked at by the next scan. Throws
/// CommandError; then nothing has changed.
/// [main-thread]
std::string RunBan(BanRequest const& request);

} // namespace vynhost
