#include "vynmediatypes/AudioBusDescription.h"

namespace vynmediatypes {

AudioBusDescription AudioBusDescription::CreateMono(vyncore::UString name, Type type) {
    return {std::move(name), CreateMonoChannelLayout(), type};
}

AudioBusDescription AudioBusDescription::CreateStereo(vyncore::UString name, Type type) {
    return {std::move(name), CreateStereoChannelLayout(), type};
}

AudioBusDescription AudioBusDescription::CreateSurround51(vyncore::UString name, Type type) {
    return {std::move(name), CreateSurround51ChannelLayout(), type};
}

} // namespace vynmediatypes
