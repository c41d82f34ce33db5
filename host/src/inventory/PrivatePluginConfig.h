#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

/// The application's own plug-ins, in folders of its own: their descriptors are stored once, when the application is
/// made, and are in the catalogue without a scan from then on, wherever the folders lie. docs/formats.md describes the
/// stored form, in which placeholders stand for the folders.
namespace vynaudiofilterhost::utility {

/// Scans the folders, with all below them, and stores what was found; the descriptors say that the filters are
/// internal. A folder that is empty as a text or isn't there has no plug-ins. The inventory and the plug-ins'
/// descriptors are emptied for this, so that what was not saved is lost, and then loaded from the settings file in the
/// user's folder for settings (PluginModuleInfoManager::LoadConfiguration), with the new private configuration.
/// @param resultFile  replaced when all is done, and not before
/// Throws when it can't be written, and whatever a scan throws; the settings file is loaded then too.
/// [main-thread]
VYN_API void BuildPrivatePluginConfig(vyncore::UString const& resultFile, vyncore::UString const& vst2Directory,
                                      vyncore::UString const& vst3Directory);

/// Puts the folders in the place of the placeholders and hands the text to
/// PluginModuleInfoManager::SetPrivatePluginConfiguration; an empty text changes nothing.
/// [main-thread]
VYN_API void SetPrivatePluginConfig(vyncore::UString const& configurationText, vyncore::UString const& vst3Directory,
                                    vyncore::UString const& vst2Directory);

/// The same with the content of a file. A file that is missing, empty, or too large for a stored property list changes
/// nothing.
/// [main-thread]
VYN_API void SetPrivatePluginConfigFromFile(vyncore::UString const& filePath, vyncore::UString const& vst3Directory,
                                            vyncore::UString const& vst2Directory);

} // namespace vynaudiofilterhost::utility
