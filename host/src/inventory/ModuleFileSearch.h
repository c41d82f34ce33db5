#pragma once

#include "vyncore/strings/UString.h"

#include <vector>

namespace vynaudiofilterhost {

/// Which files are modules: those whose names end so, the case of ASCII letters apart.
struct ModuleFileKind {
    /// With its dot.
    vyncore::UString extension;
    /// Whether folders that are named with the extension are bundles: the modules in there for this kind of machine
    /// (os::GetBundleFolderName) count too, whatever their extension is.
    bool inBundles = false;
    /// The extension, with its dot, of the bundles of another format, where nothing is looked for; empty when there are
    /// none.
    vyncore::UString otherBundles = {};
};

/// Whether the path is that of a bundle with this extension, or of something in one. The disk isn't asked.
/// [any-thread]
bool LiesInBundle(vyncore::UString const& path, vyncore::UString const& extension);

/// The full paths of the modules that lie in the folders, one folder after the other, and in everything below them. The
/// files of a folder come before what lies in the folders in it, of which the last by name is first. Links are
/// followed; a folder is entered once, by whatever paths it is reached. What can't be read counts as empty.
/// [any-thread]
std::vector<vyncore::UString> FindModuleFiles(std::vector<vyncore::UString> const& folders, ModuleFileKind const& kind);

} // namespace vynaudiofilterhost
