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

/// Where VST 2.x plug-ins may lie, as GetVST3Folders gives paths.
struct VSTFolders {
    std::vector<vyncore::UString> chosen; ///< set for this machine or this user; on Linux the variable VST_PATH
    vyncore::UString system;              ///< of all users; on Linux /usr/lib/vst
    vyncore::UString own;                 ///< on Linux ".vst" in the user's home; empty when there is none
};

/// [any-thread]
VSTFolders GetVSTFolders();

/// The extension of the system's shared modules, with its dot.
/// [any-thread]
vyncore::UString GetModuleExtension();

} // namespace os
