#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vyncore::filesupport {

/// Compares two paths as the system tells names apart: exactly on Linux, with letter case folded on Windows, both after
/// lexical normalisation. Below 0, 0 for one file, above 0. The disk isn't asked.
/// [any-thread]
VYN_API int CompareFileNames(UString const& left, UString const& right);

/// A text that two paths have in common exactly when CompareFileNames gives 0, to find files by. It is no path.
/// Texts of two paths order by their bytes as CompareFileNames orders the paths.
/// [any-thread]
VYN_API UTF8String FileNameKey(UString const& path);

} // namespace vyncore::filesupport
