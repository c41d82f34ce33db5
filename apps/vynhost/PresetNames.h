#pragma once

#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// The names of the presets that a plug-in brings along, by index. Throws what the plug-in throws.
/// [main-thread]
std::vector<std::string> ReadPresetNames(vynaudiofilterhost::AudioFilter& filter);

} // namespace vynhost
