#pragma once

#include <string>

namespace vynhost {

/// What the user asks of `vynhost config`.
struct ConfigRequest {
    enum class Action { kShow, kBuild, kUse, kClear };

    Action action = Action::kShow;
    std::string file = {};       ///< to build or to use
    std::string vst3Folder = {}; ///< of the plug-ins; empty for none
    std::string vst2Folder = {};
    double timeout = 120.0; ///< in seconds, for building
    bool json = false;
};

/// Builds a private plug-in configuration, takes one into use or out of it, and returns what the one in question holds,
/// to be printed. Throws CommandError; then nothing has changed.
/// [main-thread]
std::string RunConfig(ConfigRequest const& request);

/// The name of the command that builds in a child.
inline constexpr char const* kConfigBuilderCommand = "config-builder";

/// The child of RunConfig, which opens the plug-ins. Throws CommandError.
/// [main-thread]
void RunConfigBuilder(ConfigRequest const& request);

} // namespace vynhost
