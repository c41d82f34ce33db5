#pragma once

#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost::vst {

class VSTPluginModule;

/// The process-wide table of VST 2.x modules, by path, for as long as the library lives. A module in it may be
/// unloaded, and is loaded again when it is wanted. No lock: one thread at a time.

/// Makes an empty table in the place of a former one; the library's start does. [main-thread]
void CreateVSTModuleCache();

/// Drops the modules: they are unloaded, but for those of which filters live. [main-thread]
void DestroyVSTModuleCache();

/// The module of that file, loaded now or before. Null when it can't be loaded, or outside the library's life; reason
/// then gets one line. [main-thread]
boost::intrusive_ptr<VSTPluginModule> FindOrLoadVSTModule(vyncore::UString const& path,
                                                          vyncore::UString* reason = nullptr);

/// The same for a path in any form; the module then stays loaded. [main-thread]
boost::intrusive_ptr<VSTPluginModule> OpenVSTModule(vyncore::UString const& path, vyncore::UString& reason);

} // namespace vynaudiofilterhost::vst
