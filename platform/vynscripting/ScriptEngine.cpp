#include "vynscripting/ScriptEngine.h"

#include "vynscripting/duktape/DuktapeEngine.h"

namespace vynscripting {

ScriptEngine::~ScriptEngine() = default;

std::unique_ptr<ScriptEngine> ScriptEngine::Create(ScriptLimits const& limits) {
    return std::make_unique<duktape::DuktapeEngine>(limits);
}

} // namespace vynscripting
