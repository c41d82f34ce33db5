#pragma once

#include "vynhost/PluginRequest.h"

namespace vynhost {

/// Tells the parameters of a plug-in, as it comes; returns the text to be printed. Throws CommandError.
/// [main-thread]
std::string RunParams(PluginRequest const& request);

} // namespace vynhost
