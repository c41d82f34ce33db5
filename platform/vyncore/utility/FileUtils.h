#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vyncore::utility::FileUtils {

/// Whether `path` leads to a file. A folder is none. The path is taken as it stands and, when that misses, with each
/// backslash read as a slash, so that a path kept in its Windows form is found on every system.
/// [any-thread]
VYN_API bool FileExists(UString const& path);

/// Makes `text` the whole content of the file, which is created when it is missing; its folder is not.
/// False when any of it failed; the file may then be there in part.
/// [any-thread]
VYN_API bool SimpleWriteStringToFile(UString const& path, UTF8String const& text);

} // namespace vyncore::utility::FileUtils
