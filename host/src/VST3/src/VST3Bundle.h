#pragma once

#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost::vst3 {

/// The module file for this machine inside a bundle folder: Contents/<machine>/<title>, or the only module that lies
/// there. Empty when there is none; reason then has one line that says why. [any-thread]
vyncore::UString FindModuleInBundle(vyncore::UString const& folder, vyncore::UString& reason);

/// Whether the path is that of a VST3 module: a bundle, something in one, or a file with the format's extension.
/// [any-thread]
bool IsVST3Path(vyncore::UString const& path);

/// The module of a bundle folder or of a module file, through the cache. Null when it can't be had; reason then has one
/// line that says why.
/// [main-thread]
boost::intrusive_ptr<PluginModule> OpenVST3Module(vyncore::UString const& path, vyncore::UString& reason);

} // namespace vynaudiofilterhost::vst3
