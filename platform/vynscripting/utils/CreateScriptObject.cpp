#include "vynscripting/utils/CreateScriptObject.h"

#include "vynscripting/definition/ScriptDefinitions.h"
#include "vynscripting/InternalErrorException.h"
#include "vynscripting/ScriptObject.h"

namespace vynscripting::utils {

ScriptObjectPtr CreateScriptObject(ScriptContextHdl const& context, std::string const& className,
                                   std::function<void(ScriptObject&)> const& initialize) {
    auto const* const definition = definition::ScriptDefinitions::Get().Find(className);
    if (!definition)
        throw InternalErrorException();
    ScriptObjectPtr object = definition->CreateFactoryInstance(context);
    if (initialize)
        initialize(*object);
    return object;
}

} // namespace vynscripting::utils
