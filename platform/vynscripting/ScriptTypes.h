#pragma once

#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

/// A script engine's side of the library: objects that scripts see, what they can do, and the engine that runs scripts.
namespace vynscripting {

class NativePromise;
class ScriptObject;

/// What an item of a script object takes or gives.
enum class ValueType : std::uint8_t {
    kVoid,
    kBool,
    kInt,   ///< a whole number of 32 bits
    kFloat, ///< a number; never what is none when it comes from a script
    kString,
    kStringArray,
    kObject, ///< a script object, or null when an item gives it
    kObjectArray,
};

using ParameterType = ValueType;
using PropertyType = ValueType;

using ScriptObjectPtr = boost::intrusive_ptr<ScriptObject>;

/// One value on its way between a script and an item. A promise is given by items that are called asynchronously, and
/// by no others.
using ScriptValue = std::variant<std::monostate, bool, int, double, vyncore::UString, std::vector<vyncore::UString>,
                                 ScriptObjectPtr, std::vector<ScriptObjectPtr>, boost::intrusive_ptr<NativePromise>>;

/// The script type of a type of C++.
/// [any-thread]
template <class T>
constexpr ValueType ValueTypeOf() {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_void_v<Plain>)
        return ValueType::kVoid;
    else if constexpr (std::is_same_v<Plain, bool>)
        return ValueType::kBool;
    else if constexpr (std::is_same_v<Plain, int>)
        return ValueType::kInt;
    else if constexpr (std::is_floating_point_v<Plain>)
        return ValueType::kFloat;
    else if constexpr (std::is_same_v<Plain, vyncore::UString>)
        return ValueType::kString;
    else if constexpr (std::is_same_v<Plain, std::vector<vyncore::UString>>)
        return ValueType::kStringArray;
    else if constexpr (std::is_same_v<Plain, std::vector<ScriptObjectPtr>>)
        return ValueType::kObjectArray;
    else {
        static_assert(std::is_convertible_v<Plain, ScriptObjectPtr>, "a script knows no such type");
        return ValueType::kObject;
    }
}

/// The type's name, as the listing of the script interface has it.
/// [any-thread]
constexpr std::string_view ValueTypeName(ValueType type) {
    constexpr std::string_view kNames[] = {"void", "bool", "int", "float", "string", "string[]", "object", "object[]"};
    return kNames[static_cast<std::size_t>(type)];
}

} // namespace vynscripting
