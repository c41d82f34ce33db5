#pragma once

#include "vyncore/Export.h"

namespace vynscripting::definition {
class ScriptDefinitions;
}

namespace vynscripting::factory {

/// A static object that makes a class of script objects known when its library is loaded. The class's definition is
/// made when the definitions are asked for.
class VYN_API ScriptObjectDefinitionRegistrar {
public:
    using Enter = void (*)(definition::ScriptDefinitions& definitions);

    /// @param enter  calls AddObjectDefinition
    /// [any-thread]
    explicit ScriptObjectDefinitionRegistrar(Enter enter) noexcept;
    ScriptObjectDefinitionRegistrar(ScriptObjectDefinitionRegistrar const&) = delete;
    ScriptObjectDefinitionRegistrar& operator=(ScriptObjectDefinitionRegistrar const&) = delete;
    /// A class that isn't entered yet is forgotten.
    /// [any-thread]
    ~ScriptObjectDefinitionRegistrar();

    /// Enters the classes that have been registered since the last time.
    /// [main-thread]
    static void EnterNew(definition::ScriptDefinitions& definitions);

private:
    static ScriptObjectDefinitionRegistrar* TakeNew() noexcept;

    Enter const mEnter;
    ScriptObjectDefinitionRegistrar* mNext;
};

} // namespace vynscripting::factory
