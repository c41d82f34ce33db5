#pragma once

#include "vyncore/Export.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"

#include <cstddef>

/// Property lists as files, in the form of PropListText.h.
namespace vyncore::proplist::utils {

/// The largest file that is read or written.
constexpr std::size_t kMostFileBytes = std::size_t{256} << 20;

/// Reads a list from a file. With `merge` what it holds is laid over `list`: its values take the place of those with
/// the same keys, list by list all the way down, and everything else stays; otherwise it takes the place of all.
/// False when there is no such file, it can't be read, is no ordinary one, larger than kMostFileBytes, or no property
/// list; `list` stays as it was then.
/// [any-thread]
VYN_API bool LoadPropList(UString const& path, PropList& list, bool merge);

/// Makes the list the content of a file, which is created when it is missing; its folder is not. The file holds its old
/// content or the new one, whole, at any time. False when the new content can't be written (no folder, a full disk).
/// Throws filesupport::file_delete_exception when the old file can't be replaced or the disk refuses what it had taken,
/// which is how some say that they are full; std::length_error as WritePropList does and when LoadPropList could not
/// read the file for its size.
/// [any-thread]
VYN_API bool SavePropList(filesupport::File const& file, PropList const& list);

} // namespace vyncore::proplist::utils
