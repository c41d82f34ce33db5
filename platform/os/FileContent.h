#pragma once

#include "vyncore/strings/UString.h"

#include <cstddef>
#include <optional>
#include <string>

namespace os {

/// The bytes of a file. Empty when there is none, it can't be read, it is no ordinary one (opening a pipe would wait
/// for a writer), or it holds more than `most` bytes.
/// [any-thread]
std::optional<std::string> ReadFileContent(vyncore::UString const& path, std::size_t most);

} // namespace os
