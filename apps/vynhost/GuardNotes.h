#pragma once

#include "guard/OutputGuard.h"

#include <string>
#include <vector>

namespace vynhost {

/// What a user should know of what the guard had to do; nothing when it had nothing to do.
/// [any-thread]
std::vector<std::string> DescribeGuard(vynguard::OutputGuard::Report const& report);

} // namespace vynhost
