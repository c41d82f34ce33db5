#pragma once

#include "vynhost/CommandError.h"

#include <functional>
#include <string>

namespace vynhost {

/// Runs a command's work, which returns what is to be printed on standard output, prints it, and gives the program's
/// exit status. A failure is reported in one line on standard error, or with `json` as one document on standard output.
/// Nothing is thrown: whatever leaves the work is a failure.
/// [main-thread]
ExitStatus RunCommand(bool json, std::function<std::string()> const& work) noexcept;

} // namespace vynhost
