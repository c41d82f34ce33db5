#pragma once

#include <string>

namespace os {

/// Why the system could not load the file at that native path, as far as the first bytes of the file tell; null when
/// they look like those of a module for this machine. The loader's own message is at times none: it calls a module for
/// another machine a missing file.
/// [any-thread]
char const* ExplainRefusedModule(std::string const& path);

} // namespace os
