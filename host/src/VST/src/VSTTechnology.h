#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

/// What ties VST 2.x into the catalogue and the inventory. All of it is registered as the library is loaded, before
/// anyone can ask for a filter; nobody else calls it.
namespace vynaudiofilterhost::vst {

/// The filter of a unique ID that the catalogue knows, with or without its "2:", under the name that the catalogue
/// gives it; null when there is none.
/// [main-thread]
boost::intrusive_ptr<AudioFilter> CreateVSTAudioFilter(vyncore::UString const& id);

/// The modules in the folder and all below it, but for the banned ones. What lies in a bundle of another format is no
/// VST 2.x module.
/// [main-thread]
std::vector<PluginLocator> CollectVSTPlugins(vyncore::filesupport::Dir const& root);

/// A context for one scan.
/// [main-thread]
boost::intrusive_ptr<PluginScanContext> CreateVSTScanContext(std::vector<vyncore::filesupport::Dir> const& ignored);

/// Where modules are looked for when the user has not said (os::GetVSTFolders): what was chosen for this machine and
/// the system's folder, as far as they exist, each once; then the user's own, which need not exist yet.
/// [main-thread]
std::vector<vyncore::UString> GetDefaultVSTDirectories();

/// The path as it is.
/// [main-thread]
vyncore::UString GetVSTPathDisplayString(vyncore::UString const& path);

} // namespace vynaudiofilterhost::vst
