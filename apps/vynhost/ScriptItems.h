#pragma once

#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/definition/ScriptItemDefinition.h"
#include "vynscripting/definition/ScriptObjectDefinition.h"
#include "vynscripting/factory/ScriptObjectDefinitionRegistrar.h"
#include "vynscripting/utils/CreateScriptObject.h"

#include <memory>
#include <utility>
#include <vector>

namespace vynhost {

/// What the definitions of this program's classes of script objects have in common: they are in the namespace
/// "vynhost", and their items are for scripts.
template <class Object>
class ScriptItems {
public:
    /// For a static object in the class's source: makes the class known.
    using Registrar = vynscripting::factory::ScriptObjectDefinitionRegistrar;

    /// For the registrar.
    /// [main-thread]
    static void Enter(vynscripting::definition::ScriptDefinitions& definitions) {
        definitions.AddObjectDefinition(Object::GetClassname(),
                                        std::make_unique<vynscripting::definition::ScriptObjectDefinition<Object>>());
    }

    /// Begins the definition that is being built.
    /// [main-thread]
    ScriptItems() : mDefinition(*vynscripting::definition::ScriptObjectDefinitionBase::sCurrent) {
        mDefinition.AddOrModifyNamespace("vynhost", 0);
        mDefinition.AddOrModifyNamespace(Object::GetClassname(),
                                         vynscripting::definition::ScriptObjectDefinitionBase::kNamespaceIsClass);
    }

    /// [main-thread]
    template <class Getter>
    void Property(char const* name, char const* description, Getter getter) {
        mDefinition.AddProperty(Item::Property({name, description}, getter, kFlags));
    }

    /// [main-thread]
    template <class Function>
    void Method(char const* name, std::vector<char const*> arguments, char const* description, Function function) {
        mDefinition.AddProperty(Item::Method({name, description, std::move(arguments)}, function, kFlags));
    }

private:
    using Item = vynscripting::definition::ScriptItemDefinition<Object>;

    static constexpr unsigned kFlags = vynscripting::definition::ScriptItemFlags::kScriptable;

    vynscripting::definition::ScriptObjectDefinitionBase& mDefinition;
};

/// A new object of a class that is known, with `initialize` called on it.
/// [main-thread]
template <class Object, class Initialize>
vynscripting::ScriptObjectPtr MakeScriptObject(vynscripting::ScriptContextHdl const& context,
                                               Initialize const& initialize) {
    return vynscripting::utils::CreateScriptObject(
        context, Object::GetClassname(),
        [&](vynscripting::ScriptObject& object) { initialize(dynamic_cast<Object&>(object)); });
}

} // namespace vynhost
