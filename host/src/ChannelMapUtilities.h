#pragma once

#include "vyncore/Export.h"
#include "vynmediatypes/AudioBusDescription.h"

#include <vector>

namespace vynaudiofilterhost::utility {

/// The number of channels of all buses together.
/// [any-thread]
VYN_API int CountChannels(std::vector<vynmediatypes::AudioBusDescription> const& buses);

} // namespace vynaudiofilterhost::utility
