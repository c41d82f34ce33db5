#pragma once

#include "vyncore/Export.h"

namespace vynaudiofilterhost {

/// Whether an application goes on offering filters that others have replaced. The library takes no notice of it. It is
/// the entry "UseLegacyAudioFilters" of the debug database, and true until something else is set.
/// [any-thread]
VYN_API void UseLegacyFilters(bool use);
/// [any-thread]
VYN_API bool IsUsingLegacyFilters();

} // namespace vynaudiofilterhost
