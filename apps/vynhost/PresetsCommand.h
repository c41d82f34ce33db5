#pragma once

#include "vynhost/PluginRequest.h"

namespace vynhost {

/// Tells the presets that a plug-in brings along; returns the text to be printed. Throws CommandError.
/// [main-thread]
std::string RunPresets(PluginRequest const& request);

} // namespace vynhost
