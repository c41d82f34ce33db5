#include "vynaudiofilterhost/inventory/FileScannedModule.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

#include <algorithm>

namespace vynaudiofilterhost {

void FileScannedModule(boost::intrusive_ptr<PluginModuleInfo> const& info,
                       std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> const& descriptors) {
    if (!info)
        return;
    info->SetHasAnyNonSynthEffect(std::any_of(descriptors.begin(), descriptors.end(), [](auto const& descriptor) {
        return descriptor && !descriptor->IsSynth();
    }));
    PluginModuleInfoManager::GetInstance().AddPluginModuleInfo(info);
    for (auto const& descriptor : descriptors)
        AudioFilterDescriptorManager::GetInstance().AddAudioFilterDescriptor(descriptor);
}

} // namespace vynaudiofilterhost
