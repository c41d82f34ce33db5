#include "vynaudiofilterhost/catalogue/AudioFilterLegacyIDMapper.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

namespace vynaudiofilterhost {

AudioFilterLegacyIDMapper::AudioFilterLegacyIDMapper(vyncore::UString const& legacyID,
                                                     vyncore::UString const& currentID) {
    AudioFilterDescriptorManager::GetInstance().AddLegacyToCurrentIDMapping(legacyID, currentID);
}

} // namespace vynaudiofilterhost
