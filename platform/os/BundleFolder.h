#pragma once

#include "vyncore/strings/UString.h"

/// Plug-in bundles hold one folder of binaries for each kind of machine.
namespace os {

/// The name of the folder with this machine's binaries, such as "x86_64-linux".
/// [any-thread]
vyncore::UString GetBundleFolderName();

/// The extension of the module files in that folder, with its dot.
/// [any-thread]
vyncore::UString GetBundleModuleExtension();

} // namespace os
