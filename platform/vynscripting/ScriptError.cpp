#include "vynscripting/ScriptError.h"

#include <utility>

namespace vynscripting {

ScriptError::ScriptError(std::string const& text, std::string file, int line, std::string stack)
    : std::runtime_error(text), mFile(std::move(file)), mLine(line), mStack(std::move(stack)) {}

ScriptError::ScriptError(ScriptError const&) = default;
ScriptError::~ScriptError() = default;

} // namespace vynscripting
