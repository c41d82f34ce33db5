#pragma once

#include "vynscripting/ScriptError.h"

#include <functional>
#include <string>

struct duk_hthread;

namespace vynscripting::duktape {

class DuktapeHeap;

/// A place in a script.
struct ScriptPlace {
    std::string file;
    int line = 0;
};

/// What a call into the host came to, when it threw.
struct CallFailure {
    int errorClass;   ///< one of Duktape's
    std::string text; ///< UTF-8
};

/// Runs a call into the host, out of which nothing may be thrown into the engine. True when it threw.
/// [main-thread]
bool CatchFailure(std::function<void()> const& call, CallFailure& failure);

/// Takes what a script threw off the top of the stack and makes an error of it.
/// @param fallback  its place, when what was thrown bears none
/// [main-thread]
ScriptError TakeError(DuktapeHeap& heap, ScriptPlace const& fallback);

} // namespace vynscripting::duktape
