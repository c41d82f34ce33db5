#pragma once

#include "vyncore/strings/UString.h"

#include <vector>

/// Where plug-ins lie on this system, and what their files are called. The environment is read at each call; nothing is
/// looked at, so that a folder need not exist.
namespace os {

/// The folders of VST3 plug-ins, as absolute paths without a trailing separator, in the order in which they are to be
/// searched. On Linux these are the entries of the variable VST3_PATH, none when it is empty; without it ".vst3" in the
/// user's home, /usr/lib/vst3 and /usr/local/lib/vst3.
/// [any-thread]
std::vector<vyncore::UString> GetVST3Folders();

/// The extension of the system's shared modules, with its dot.
/// [any-thread]
vyncore::UString GetModuleExtension();

} // namespace os
