#include "vynaudiofilterhost/catalogue/AudioFilterCategory.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/VST/src/EffectText.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vynaudiofilterhost/VST/src/VSTFactoryGuid.h"
#include "vynaudiofilterhost/VST/src/VSTUniqueID.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringUtils.h"

namespace vynaudiofilterhost::vst {

namespace {

vyncore::debug::TracePoint theDescriptorTrace(6, "VST");

AudioFilterCategory CategoryOf(std::intptr_t plugCategory) {
    switch (plugCategory) {
    case kPlugCategEffect:
        return kCategoryEffect;
    case kPlugCategSynth:
        return kCategorySynth;
    case kPlugCategAnalysis:
        return kCategoryAnalysis;
    case kPlugCategMastering:
        return kCategoryMastering;
    case kPlugCategSpacializer:
        return kCategorySpacializer;
    case kPlugCategRoomFx:
        return kCategoryRoomFx;
    case kPlugSurroundFx:
        return kCategorySurroundFx;
    case kPlugCategRestoration:
        return kCategoryRestoration;
    case kPlugCategOfflineProcess:
        return kCategoryOfflineProcess;
    case kPlugCategGenerator:
        return kCategoryGenerator;
    default:
        return kCategoryNone;
    }
}

} // namespace

boost::intrusive_ptr<AudioFilterDescriptor> VSTAudioFilter::CreateFilterDescriptor(PluginLocator const& locator,
                                                                                   bool internalFilter) {
    boost::intrusive_ptr<AudioFilterDescriptor> descriptor;
    if (!GetEffect())
        return descriptor;
    try {
        auto const version = static_cast<unsigned>(Dispatch(effGetVstVersion, 0, 0, nullptr, 0.0f));
        UString const name = GetDisplayName();
        UString const vendor = ReadVendorString(GetEffect());
        AudioFilterCategory category = internalFilter ? kCategoryInternal : kCategoryNone;
        // An effect of the interface's first version knows no categories.
        if (!internalFilter && static_cast<unsigned>(Dispatch(effGetVstVersion, 0, 0, nullptr, 0.0f)) > 1)
            category = CategoryOf(Dispatch(effGetPlugCategory, 0, 0, nullptr, 0.0f));
        vyncore::debug::DebugTrace(theDescriptorTrace,
                                   [&name] { return u"CreateFilterDescriptor, Effectname: " + name; });
        descriptor = new AudioFilterDescriptor(PluginLocator(kTechnologyVST, locator.GetPath()), name, vendor, version,
                                               category, MakeVSTUniqueID(GetEffect()->uniqueID, locator.GetPath()),
                                               GetVSTFactoryGuid(), IsMusicDevice());
        if (!IsMusicDevice()) {
            descriptor->SetSupportsMono(IsChannelFormatSupported(vynmediatypes::CreateMonoChannelLayout()));
            descriptor->SetSupportsStereo(IsChannelFormatSupported(vynmediatypes::CreateStereoChannelLayout()));
        }
    } catch (...) {
        // The record as far as it got is as much as this effect lets be known.
    }
    return descriptor;
}

} // namespace vynaudiofilterhost::vst
