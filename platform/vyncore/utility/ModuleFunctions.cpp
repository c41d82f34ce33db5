#include "vyncore/utility/ModuleFunctions.h"

#include "os/ModuleLoader.h"

namespace vyncore::utility {

void* GetFunctionPointerFromModuleImpl(HINSTANCE__* module, char const* name) {
    return os::FindExport(module, name);
}

} // namespace vyncore::utility
