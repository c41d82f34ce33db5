#pragma once

#include <string>

namespace vynhost {

/// What the user asks of `vynhost info`.
struct InfoRequest {
    std::string modulePath;
    std::string classID = {}; ///< empty when the module's only class is meant
    bool json = false;
};

/// Tells what is known of a plug-in; returns the text to be printed. Throws CommandError.
/// [main-thread]
std::string RunInfo(InfoRequest const& request);

} // namespace vynhost
