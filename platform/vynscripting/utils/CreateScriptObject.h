#pragma once

#include "vyncore/Export.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptContext.h"
#include "vynscripting/ScriptTypes.h"

#include <functional>
#include <string>

namespace vynscripting::utils {

/// Makes an object of a class that is known by name.
/// @param initialize  gets the new object, to make of it what is wanted; may be empty
/// Throws InternalErrorException when there is no such class, and what the class and `initialize` throw.
/// [main-thread]
VYN_API ScriptObjectPtr CreateScriptObject(ScriptContextHdl const& context, std::string const& className,
                                           std::function<void(ScriptObject&)> const& initialize);

} // namespace vynscripting::utils
