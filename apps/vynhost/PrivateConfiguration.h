#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/UString.h"

#include <optional>
#include <set>

namespace vynhost {

/// The private plug-in configuration as it is stored: its text, in which placeholders stand for folders, and the
/// folders. docs/formats.md describes the file.
struct PrivateConfiguration {
    vyncore::UString text;
    vyncore::UString vst3Folder; ///< whole paths; empty for none
    vyncore::UString vst2Folder;
};

/// Where it is stored.
/// [main-thread]
vyncore::filesupport::File GetPrivateConfigurationFile();

/// Empty when none is stored.
/// [main-thread]
std::optional<PrivateConfiguration> ReadPrivateConfiguration();

/// Hands the stored one, if there is one, to the library, which takes it up with the next settings that it loads, and
/// returns its modules. What the library knew of modules before is lost then.
/// [main-thread]
std::set<vynaudiofilterhost::PluginLocator> LoadPrivateConfiguration();

/// Stores it in the place of what was there; nothing is stored when it is empty. Throws CommandError.
/// [main-thread]
void SavePrivateConfiguration(std::optional<PrivateConfiguration> const& configuration);

} // namespace vynhost
