#pragma once

#include <string>

namespace vynhost {

/// What the user asks of a command that tells something of a plug-in.
struct PluginRequest {
    std::string modulePath;
    std::string classID = {}; ///< empty when the module's only class is meant
    bool json = false;
};

} // namespace vynhost
