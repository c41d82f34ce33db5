#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"

#include "vynaudiofilterhost/catalogue/DescriptorLookup.h"

namespace vynaudiofilterhost {

AudioFilterFactory::AudioFilterFactory() = default;

AudioFilterFactory::~AudioFilterFactory() = default;

AudioFilterFactory& AudioFilterFactory::GetInstance() {
    static AudioFilterFactory factory;
    return factory;
}

void AudioFilterFactory::RegisterFactoryFunction(vyncore::utility::Guid const& guid, FactoryFunction const& function) {
    mFunctions.emplace(guid, function);
}

boost::intrusive_ptr<AudioFilter> AudioFilterFactory::CreateAudioFilter(vyncore::UString const& id) const {
    auto const descriptor = FindDescriptorForLooseID(id);
    if (!descriptor)
        return nullptr;
    auto const function = mFunctions.find(descriptor->GetFactoryGuid());
    return function != mFunctions.end() ? function->second(id) : nullptr;
}

} // namespace vynaudiofilterhost
