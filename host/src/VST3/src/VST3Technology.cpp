#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/VST3/src/VST3FactoryGuid.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/debug/Trace.h"

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;

namespace {

vyncore::debug::TracePoint theCreateTrace(6, "VST3");

boost::intrusive_ptr<AudioFilter> CreateVST3AudioFilter(UString const& id) {
    auto const descriptor = AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(id);
    if (!descriptor)
        return nullptr;
    UString const path = descriptor->GetLocator().GetPath();
    vyncore::debug::DebugTrace(theCreateTrace, [&] { return u"CreateAudioFilter(), path:" + path; });
    auto const module = FindOrLoadVST3Module(path);
    return module ? module->CreateAudioFilter(id) : nullptr;
}

/// Ties the format in as the library is loaded, before anyone can ask for a filter.
struct RegisterVST3Technology {
    RegisterVST3Technology() {
        AudioFilterFactory::GetInstance().RegisterFactoryFunction(GetVST3FactoryGuid(), CreateVST3AudioFilter);
    }
} const theRegistration;

} // namespace

} // namespace vynaudiofilterhost::vst3
