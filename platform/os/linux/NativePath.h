#pragma once

#include "vyncore/strings/UString.h"

#include <optional>
#include <string>

namespace os {

/// The path as the system's calls take it; empty when it names nothing: no text, or a zero that would cut it short.
/// [any-thread]
std::optional<std::string> ToNativePath(vyncore::UString const& path);

} // namespace os
