#include "vynhost/PresetNames.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/strings/StringUtils.h"

namespace vynhost {

std::vector<std::string> ReadPresetNames(vynaudiofilterhost::AudioFilter& filter) {
    std::vector<std::string> names;
    int const count = filter.GetNumFactoryPresets();
    for (int index = 0; index < count; ++index)
        names.push_back(vyncore::string::UTF16to8(filter.GetFactoryPresetName(index)));
    return names;
}

} // namespace vynhost
