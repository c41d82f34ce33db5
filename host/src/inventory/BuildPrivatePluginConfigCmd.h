#pragma once

#include "vyncore/console/Command.h"

namespace vynaudiofilterhost::console {

/// The console's way to utility::BuildPrivatePluginConfig. Takes the path of the result file, the folder of VST3
/// plug-ins and, if there is one, that of VST 2.x plug-ins; with another number of arguments it says so and does
/// nothing.
class BuildPrivatePluginConfigCmd final : public vyncore::console::Command {
public:
    using Command::Command;

    /// Throws what BuildPrivatePluginConfig throws.
    /// [main-thread]
    bool Execute(std::vector<vyncore::UString> const& args, vyncore::UString& output) override;

    /// Makes the command known to the console, and takes it away.
    /// [main-thread]
    static void Register();
    static void Unregister();
};

} // namespace vynaudiofilterhost::console
