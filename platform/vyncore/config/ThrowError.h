#pragma once

#include "vyncore/Export.h"

#include <string_view>

namespace vyncore::config {

/// Reports a call that breaks a contract: throws std::invalid_argument, whose text is the localised `zstring` and then
/// the name of what broke it, both in UTF-8.
/// [any-thread]
[[noreturn]] VYN_API void ThrowError(std::string_view zstring, std::string_view name);

} // namespace vyncore::config
