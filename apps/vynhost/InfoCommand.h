#pragma once

#include "vynhost/PluginRequest.h"

namespace vynhost {

/// Tells what is known of a plug-in; returns the text to be printed. Throws CommandError.
/// [main-thread]
std::string RunInfo(PluginRequest const& request);

} // namespace vynhost
