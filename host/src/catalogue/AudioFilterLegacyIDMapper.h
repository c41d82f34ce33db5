#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vynaudiofilterhost {

/// A static object beside an internal filter's code that tells the catalogue of an ID that the filter once had. It
/// holds nothing, and the mapping stays when it goes.
class VYN_API AudioFilterLegacyIDMapper {
public:
    /// The first mapping of a legacy ID stays (AudioFilterDescriptorManager::AddLegacyToCurrentIDMapping).
    /// [main-thread]
    AudioFilterLegacyIDMapper(vyncore::UString const& legacyID, vyncore::UString const& currentID);
};

} // namespace vynaudiofilterhost
