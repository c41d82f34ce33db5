#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

/// What ties VST3 into the catalogue and the inventory. All of it is registered as the library is loaded, before anyone
/// can ask for a filter; nobody else calls it.
namespace vynaudiofilterhost::vst3 {

/// The filter of a unique ID that the catalogue knows, from the module that it lies in; null when there is none.
/// [main-thread]
boost::intrusive_ptr<AudioFilter> CreateVST3AudioFilter(vyncore::UString const& id);

/// The modules in the system's folders for VST3 plug-ins (os::GetVST3Folders) and all below them, but for the banned
/// ones. The user has no say in these folders.
/// [main-thread]
std::vector<PluginLocator> CollectVST3Plugins(vyncore::filesupport::Dir const& ignored);

/// A context for one scan.
/// [main-thread]
boost::intrusive_ptr<PluginScanContext> CreateVST3ScanContext(std::vector<vyncore::filesupport::Dir> const& ignored);

/// None: the format doesn't use the user's folders.
/// [main-thread]
std::vector<vyncore::UString> GetDefaultVST3Directories();

/// The path as it is.
/// [main-thread]
vyncore::UString GetVST3PathDisplayString(vyncore::UString const& path);

} // namespace vynaudiofilterhost::vst3
