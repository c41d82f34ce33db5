#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginTechnology.h"
#include "vyncore/strings/UString.h"

#include <string>
#include <vector>

namespace vynhost {

/// The path as the library's paths of modules begin: absolute, in its plainest form, without a separator at the end.
/// [any-thread]
vyncore::UString MakeWholePath(std::string const& path);

/// Whether the path leads to `folder` or to something below it. Both are whole paths.
/// [any-thread]
bool IsBelow(vyncore::UString const& path, vyncore::UString const& folder);

/// The folders that are searched for modules of a technology as a rule.
/// [main-thread]
std::vector<vyncore::UString> ListSearchedFolders(vynaudiofilterhost::PluginTechnology const& technology);

/// Tells on standard error of files and folders that no search comes across, since their names are no UTF-8.
/// @param folders  as of SearchModules
/// [main-thread]
void TellNamelessFiles(std::vector<vyncore::UString> const& folders);

/// The modules that all technologies find, but for the banned ones.
/// @param folders   whole paths of where to look, with all below them; empty for all folders that are searched as a
/// rule
/// @param vanished  becomes the modules that are known and were not found
/// Throws CommandError when a folder can't be searched.
/// [main-thread]
std::vector<vynaudiofilterhost::PluginLocator> SearchModules(std::vector<vyncore::UString> const& folders,
                                                             std::vector<vynaudiofilterhost::PluginLocator>& vanished);

/// The modules that a user names: by the path of one, of a bundle or of a folder, by the name of its file, or by the
/// name or unique ID of a plug-in. They may be known, banned, or lie there for the first time. Throws CommandError when
/// there are none.
/// [main-thread]
std::vector<vynaudiofilterhost::PluginLocator> FindModules(std::string const& module);

} // namespace vynhost
