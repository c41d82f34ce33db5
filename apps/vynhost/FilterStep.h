#pragma once

#include <functional>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// One thing that is done to a filter. It throws what the plug-in throws.
using FilterStep = std::function<void(vynaudiofilterhost::AudioFilter& filter)>;

} // namespace vynhost
