#include "vynhost/DescriptorRow.h"

#include "vynhost/TechnologyName.h"

#include "vyncore/strings/StringUtils.h"

namespace vynhost {

using vyncore::string::UTF16to8;

nlohmann::ordered_json ToRow(vynaudiofilterhost::AudioFilterDescriptor const& descriptor) {
    return {{"id", UTF16to8(descriptor.GetUniqueID())},
            {"name", UTF16to8(descriptor.GetName())},
            {"vendor", UTF16to8(descriptor.GetVendorString())},
            {"version", descriptor.GetVersion()},
            {"category", static_cast<int>(descriptor.GetCategory())},
            {"categoryName", UTF16to8(descriptor.GetCategoryName())},
            {"technology", TechnologyName(descriptor.GetLocator().GetTechnologyType())},
            {"path", UTF16to8(descriptor.GetLocator().GetPath())},
            {"synth", descriptor.IsSynth()},
            {"mono", descriptor.GetSupportsMono()},
            {"stereo", descriptor.GetSupportsStereo()},
            {"enabled", descriptor.IsEnabled()}};
}

} // namespace vynhost
