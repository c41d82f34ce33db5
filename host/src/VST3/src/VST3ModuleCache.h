#pragma once

#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost::vst3 {

class VST3PluginModule;

/// The process-wide table of loaded VST3 modules, by path. A module in it stays loaded until the library stops: every
/// filter and every scan of that file share it. No lock: one thread at a time.

/// Makes the empty table; the library's start does. [main-thread]
void CreateVST3ModuleCache();

/// Unloads every module in the order of paths, and then drops them. [main-thread]
void DestroyVST3ModuleCache();

/// The module of that file, loaded now or before. Null when it can't be loaded, when the file of a loaded module has
/// gone (the module stays in the table), or outside the library's life; reason then gets one line. [main-thread]
boost::intrusive_ptr<VST3PluginModule> FindOrLoadVST3Module(vyncore::UString const& path,
                                                            vyncore::UString* reason = nullptr);

/// Brings a path into its plain form: backslashes, no "\\?\" in front, no doubled separator behind the start.
/// [any-thread]
void NormalizeModulePath(vyncore::UString& path);

} // namespace vynaudiofilterhost::vst3
