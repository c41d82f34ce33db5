#pragma once

#include "vynhost/CommandError.h"

#include <functional>
#include <string>

namespace vynhost {

/// How a failure is reported.
enum class FailureForm {
    kText,         ///< on standard error: one line, and what tells more of it below
    kJSONDocument, ///< on standard output, over several lines
    kJSONLine,     ///< likewise in one, behind others that are written already
};

/// Runs a command's work, which returns what is to be printed on standard output, prints it, and gives the program's
/// exit status. Nothing is thrown: whatever leaves the work is a failure.
/// [main-thread]
ExitStatus RunCommand(FailureForm form, std::function<std::string()> const& work) noexcept;

} // namespace vynhost
