#pragma once

#include "vyncore/Export.h"

namespace vynaudiofilterhost {

/// Starts the library: the first call makes the calling thread the main thread and creates the tables of loaded
/// modules. A further call only counts, and its argument is ignored. Always true.
/// `synthsEnabled`: whether instruments are offered beside effects.
/// [main-thread]
VYN_API bool Initialize(bool synthsEnabled);

/// Takes one Initialize back; the last one unloads the modules. Every filter must have gone by then. Without an
/// Initialize to take back it does nothing.
/// [main-thread]
VYN_API void Terminate();

} // namespace vynaudiofilterhost
