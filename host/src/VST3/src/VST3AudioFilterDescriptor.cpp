#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"
#include "vynaudiofilterhost/VST3/src/VST3ClassID.h"
#include "vynaudiofilterhost/VST3/src/VST3FactoryGuid.h"
#include "vynaudiofilterhost/VST3/src/VST3SubCategories.h"

namespace vynaudiofilterhost::vst3 {

boost::intrusive_ptr<AudioFilterDescriptor> VST3AudioFilter::CreateFilterDescriptor(PluginLocator const& locator,
                                                                                    bool internalFilter) {
    boost::intrusive_ptr<AudioFilterDescriptor> descriptor;
    if (!mCreated)
        return descriptor;
    try {
        SubCategoryVerdict const kind = CategoryFromSubCategories(mSubCategories, internalFilter);
        descriptor = new AudioFilterDescriptor(locator, GetDisplayName(), mVendor, 0, kind.category,
                                               FormatVST3ClassID(mClassID), GetVST3FactoryGuid(), kind.instrument);
        if (!kind.instrument) {
            descriptor->SetSupportsMono(IsChannelFormatSupported(vynmediatypes::CreateMonoChannelLayout()));
            descriptor->SetSupportsStereo(IsChannelFormatSupported(vynmediatypes::CreateStereoChannelLayout()));
        }
    } catch (...) {
        // The record as far as it got is as much as this plug-in lets be known.
    }
    return descriptor;
}

} // namespace vynaudiofilterhost::vst3
