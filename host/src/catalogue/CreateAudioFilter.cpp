#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"

#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/catalogue/DescriptorLookup.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

namespace vynaudiofilterhost::utility {

boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& id) {
    if (id.empty())
        return nullptr;
    auto descriptor = FindDescriptorForLooseID(id);
    if (!descriptor)
        descriptor = FindRenamedDescriptor(id);
    if (!descriptor || !descriptor->IsEnabled())
        return nullptr;
    if (!descriptor->IsInternal() &&
        !PluginModuleInfoManager::GetInstance().IsPluginEnabled(descriptor->GetLocator(), false))
        return nullptr;
    return AudioFilterFactory::GetInstance().CreateAudioFilter(descriptor->GetUniqueID());
}

} // namespace vynaudiofilterhost::utility
