#include "vynaudiofilterhost/catalogue/AudioFilterRegistrar.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

namespace vynaudiofilterhost {

AudioFilterRegistrar::AudioFilterRegistrar(DescriptorFunction const& descriptorFunction,
                                           FilterFactoryFunction const& filterFactoryFunction) {
    GetFactoryVector().emplace_back(descriptorFunction, filterFactoryFunction);
}

AudioFilterRegistrar::FactoryVector& AudioFilterRegistrar::GetFactoryVector() {
    static FactoryVector vector;
    return vector;
}

void AudioFilterRegistrar::RegisterDeferredDescriptors() {
    // By index and copy: a descriptor function may load a module whose own registrars add to the vector.
    for (std::size_t index = 0; index < GetFactoryVector().size(); ++index) {
        auto const [makeDescriptor, makeFilter] = GetFactoryVector()[index];
        auto const descriptor = makeDescriptor();
        if (!descriptor)
            continue;
        AudioFilterDescriptorManager::GetInstance().AddAudioFilterDescriptor(descriptor);
        AudioFilterFactory::GetInstance().RegisterFactoryFunction(descriptor->GetFactoryGuid(), makeFilter);
    }
}

} // namespace vynaudiofilterhost
