#pragma once

#include "vyncore/strings/UString.h"

#include <string>

struct HINSTANCE__;

/// The system's loader of shared modules. A handle belongs to whoever opened the module and is given back exactly once;
/// the system counts openings of one file, so that the code stays until the last handle is closed.
/// Nothing here throws: a module's own start-up code that does so is a module that doesn't open.
///
/// Such a module does harm beyond itself. The system runs start-up and clean-up code under the loader's lock, and what
/// is thrown through it leaves the lock with the calling thread for good. That thread goes on opening modules; any
/// other that asks the system's loader for something, in whatever library, waits for ever. A module that nobody vouches
/// for is therefore best opened in a child process first.
namespace os {

/// Opens the module in the file `path`, with everything that it needs resolved at once and nothing of it visible to
/// modules opened later. The path names a file in every case: a bare name isn't looked for in the system's folders.
/// Null means failure; `reason` then holds one line in UTF-8, without the path. It is empty after success. While
/// another thread blocks the loader this fails instead of waiting.
/// [main-thread]
HINSTANCE__* OpenModule(vyncore::UString const& path, std::string& reason);

/// Gives a handle of OpenModule back. Null is allowed and does nothing. While another thread blocks the loader the
/// module stays open.
/// [main-thread]
void CloseModule(HINSTANCE__* module) noexcept;

/// The address of the export `name`, or null when there is none. A null module or name gives null, and so does every
/// name while another thread blocks the loader.
/// [any-thread]
void* FindExport(HINSTANCE__* module, char const* name) noexcept;

/// Whether a module's code threw through the loader, so that only the thread which opened or closed that module can use
/// it. Once true, it stays so until the process ends.
/// [any-thread]
bool IsLoaderBlocked() noexcept;

} // namespace os
