#pragma once

#include "vyncore/strings/UString.h"

namespace os {

/// Compares two paths as the system's file systems tell names apart (exactly, or with letter case folded), after
/// doubled and trailing separators and the steps "." and ".." are taken out. Only the texts are looked at, never the
/// disk.
/// Below 0, 0 for one file, above 0; a strict order over all texts, fit for a sorted container.
/// [any-thread]
int CompareFileNames(vyncore::UString const& left, vyncore::UString const& right);

/// A text that two paths have in common exactly when CompareFileNames gives 0, to find files by. Texts of two paths
/// order by their bytes as CompareFileNames orders the paths.
/// [any-thread]
vyncore::UTF8String FileNameKey(vyncore::UString const& path);

} // namespace os
