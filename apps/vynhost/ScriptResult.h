#pragma once

#include "vynscripting/ScriptTypes.h"

#include <nlohmann/json.hpp>

namespace vynhost {

/// What a script gives, for a document: null for nothing; an object is its class with its properties, but for those
/// that are objects themselves; a property that fails is null.
/// [main-thread]
nlohmann::ordered_json ToJSON(vynscripting::ScriptValue const& value);

} // namespace vynhost
