#pragma once

#include "vyncore/Export.h"

struct HINSTANCE__;

namespace vyncore::utility {

/// The address of a loaded module's export, or null when it is missing. A null module or name gives null.
/// [any-thread]
VYN_API void* GetFunctionPointerFromModuleImpl(HINSTANCE__* module, char const* name);

} // namespace vyncore::utility
