#pragma once

#include "vyncore/Export.h"
#include "vynscripting/definition/ScriptObjectDefinitionBase.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vynscripting::definition {

/// The definitions of all classes that scripts can see. They are built when somebody asks first, from what the
/// registrars of the loaded libraries give, and live to the end of the process.
class VYN_API ScriptDefinitions {
public:
    /// With every class that is registered by now.
    /// [main-thread]
    static ScriptDefinitions& Get();

    /// Enters the definition under the name and builds it. The first one of a name stays; null enters nothing.
    /// [main-thread]
    void AddObjectDefinition(char const* name, std::unique_ptr<ScriptObjectDefinitionBase> definition);

    /// Null when there is no class of that name.
    /// [main-thread]
    ScriptObjectDefinitionBase const* Find(std::string const& name) const;

    /// In the order of their names.
    /// [main-thread]
    std::vector<ScriptObjectDefinitionBase const*> GetAll() const;

private:
    std::map<std::string, std::unique_ptr<ScriptObjectDefinitionBase>> mDefinitions;
};

} // namespace vynscripting::definition
