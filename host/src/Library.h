#pragma once

#include "vyncore/Export.h"

namespace vynaudiofilterhost {

/// Starts the library: the first call makes the calling thread the main thread, brings the internal filters that were
/// announced (AudioFilterRegistrar) into the catalogue, registers the console command
/// "vynaudiofilterhost.BuildPrivatePluginConfig" and creates the tables of loaded modules. A further call only counts,
/// and its argument is ignored. Always true; throws what the functions of an announced filter throw, and the library is
/// not started then.
/// `synthsEnabled`: whether instruments are offered beside effects.
/// [main-thread]
VYN_API bool Initialize(bool synthsEnabled);

/// Takes one Initialize back; the last one unloads the modules and takes the console command away. Every filter must
/// have gone by then. Without an Initialize to take back it does nothing.
/// [main-thread]
VYN_API void Terminate();

} // namespace vynaudiofilterhost
