#pragma once

#include "vynscripting/definition/ScriptObjectDefinitionBase.h"
#include "vynscripting/NativePromise.h"
#include "vynscripting/ScriptObject.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace vyntest {

using Arguments = std::vector<vynscripting::ScriptValue>;

/// Calls an item of a definition as an engine does.
inline vynscripting::ScriptValue CallItem(vynscripting::definition::ScriptObjectDefinitionBase const& definition,
                                          vynscripting::ScriptObject& object, std::string const& name,
                                          Arguments const& arguments = {}) {
    for (auto const& item : definition.GetItems()) {
        if (item->GetName() == name)
            return item->Call(object.GetContextHdl().get(), object, arguments);
    }
    throw std::out_of_range(name);
}

inline vynscripting::ScriptValue CallItem(vynscripting::ScriptObjectPtr const& object, std::string const& name,
                                          Arguments const& arguments = {}) {
    return CallItem(*object->GetDefinition(), *object, name, arguments);
}

/// Each item as a line: "getter: int | what it is for" or "method(argument int): bool | what it is for".
inline std::vector<std::string> InterfaceOf(vynscripting::definition::ScriptObjectDefinitionBase const& definition) {
    std::vector<std::string> lines;
    for (auto const& item : definition.GetItems()) {
        std::string line = item->GetName();
        std::string arguments;
        for (auto const& parameter : item->GetParameters()) {
            arguments += arguments.empty() ? "" : ", ";
            arguments += parameter.name + " " + std::string(ValueTypeName(parameter.type));
        }
        if (item->GetKind() == vynscripting::definition::ScriptItem::Kind::kMethod)
            line += "(" + arguments + ")";
        line += ": " + std::string(ValueTypeName(item->GetResultType()));
        lines.push_back(line + " | " + item->GetDescription());
    }
    return lines;
}

} // namespace vyntest
