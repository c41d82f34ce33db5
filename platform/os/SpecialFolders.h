#pragma once

#include "vyncore/strings/UString.h"

/// Folders that the system or the user decides on. The answers are absolute paths without a trailing separator.
/// Nothing is created, and a folder need not exist. The environment is read at each call.
namespace os {

/// Where programs of all makers share their parts.
/// [any-thread]
vyncore::UString GetCommonFilesFolder();

/// Where programs keep the current user's settings. Empty when the system knows no home.
/// [any-thread]
vyncore::UString GetPreferencesFolder();

/// Where files may lie that nobody misses later.
/// [any-thread]
vyncore::UString GetTemporaryFolder();

/// The current user's home; empty when the system knows none.
/// [any-thread]
vyncore::UString GetHomeFolder();

} // namespace os
