#include "vynscripting/definition/ScriptDefinitions.h"

#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"

#include <utility>

namespace vynscripting::definition {

ScriptDefinitions& ScriptDefinitions::Get() {
    // Objects may be there when static objects go, and lead to their definitions: these stay.
    static auto& definitions = *new ScriptDefinitions;
    factory::ScriptObjectDefinitionRegistrar::EnterNew(definitions);
    return definitions;
}

void ScriptDefinitions::AddObjectDefinition(char const* name, std::unique_ptr<ScriptObjectDefinitionBase> definition) {
    if (!definition || mDefinitions.contains(name))
        return;
    definition->Build();
    mDefinitions.emplace(name, std::move(definition));
}

ScriptObjectDefinitionBase const* ScriptDefinitions::Find(std::string const& name) const {
    auto const found = mDefinitions.find(name);
    return found != mDefinitions.end() ? found->second.get() : nullptr;
}

std::vector<ScriptObjectDefinitionBase const*> ScriptDefinitions::GetAll() const {
    std::vector<ScriptObjectDefinitionBase const*> all;
    for (auto const& [name, definition] : mDefinitions)
        all.push_back(definition.get());
    return all;
}

} // namespace vynscripting::definition
