#pragma once

#include "vyncore/strings/UString.h"

#include <filesystem>

namespace vyncore::filesupport {

/// The path for the standard library, with the same text on every system.
/// [any-thread]
std::filesystem::path ToStdPath(UString const& path);

/// The inverse.
/// [any-thread]
UString FromStdPath(std::filesystem::path const& path);

} // namespace vyncore::filesupport
