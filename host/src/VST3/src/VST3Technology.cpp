#include "vynaudiofilterhost/VST3/src/VST3Technology.h"

#include "os/PluginFolders.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/VST3/src/VST3FactoryGuid.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vynaudiofilterhost/VST3/src/VST3ScanContext.h"
#include "vyncore/debug/Trace.h"

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;
using vyncore::filesupport::Dir;

namespace {

vyncore::debug::TracePoint theCreateTrace(6, "VST3");

// Not the functions themselves: their types would be among what the library exports, since nothing in them is our own.
struct RegisterVST3Technology {
    RegisterVST3Technology() {
        AudioFilterFactory::GetInstance().RegisterFactoryFunction(GetVST3FactoryGuid(), CreateVST3AudioFilter);
        constexpr bool kUsesDirectories = false;
        PluginModuleInfoManager::GetInstance().AddPluginTechnology(new PluginTechnology(
            kTechnologyVST3, [](Dir const& ignored) { return CollectVST3Plugins(ignored); },
            [](std::vector<Dir> const& ignored) { return CreateVST3ScanContext(ignored); },
            [] { return GetDefaultVST3Directories(); },
            [](UString const& path) { return GetVST3PathDisplayString(path); }, kUsesDirectories));
    }
} theRegistration;

} // namespace

boost::intrusive_ptr<AudioFilter> CreateVST3AudioFilter(UString const& id) {
    auto const descriptor = AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(id);
    if (!descriptor)
        return nullptr;
    UString const path = descriptor->GetLocator().GetPath();
    vyncore::debug::DebugTrace(theCreateTrace, [&] { return u"CreateAudioFilter(), path:" + path; });
    auto const module = FindOrLoadVST3Module(path);
    return module ? module->CreateAudioFilter(id) : nullptr;
}

std::vector<PluginLocator> CollectVST3Plugins(Dir const&) {
    BannedPluginManager const& bans = BannedPluginManager::GetInstance();
    std::vector<PluginLocator> modules;
    for (UString const& path : FindModuleFiles(os::GetVST3Folders(), {.extension = u".vst3", .inBundles = true})) {
        PluginLocator const locator(kTechnologyVST3, path);
        if (!bans.IsPluginBanned(locator))
            modules.push_back(locator);
    }
    return modules;
}

boost::intrusive_ptr<PluginScanContext> CreateVST3ScanContext(std::vector<Dir> const&) {
    return new VST3ScanContext;
}

std::vector<UString> GetDefaultVST3Directories() {
    return {};
}

UString GetVST3PathDisplayString(UString const& path) {
    return path;
}

} // namespace vynaudiofilterhost::vst3
