#include "vynaudiofilterhost/VST/src/VSTTechnology.h"

#include "os/PluginFolders.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/VST/src/VSTFactoryGuid.h"
#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vynaudiofilterhost/VST/src/VSTScanContext.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/filesupport/CompareFileNames.h"
#include "vyncore/strings/ASCIICase.h"

#include <algorithm>

namespace vynaudiofilterhost::vst {

using vyncore::UString;
using vyncore::filesupport::Dir;

namespace {

vyncore::debug::TracePoint theCreateTrace(6, "VSTScanContext");

// Not the functions themselves: their types would be among what the library exports, since nothing in them is our own.
struct RegisterVSTTechnology {
    RegisterVSTTechnology() {
        AudioFilterFactory::GetInstance().RegisterFactoryFunction(GetVSTFactoryGuid(), CreateVSTAudioFilter);
        constexpr bool kUsesDirectories = true;
        PluginModuleInfoManager::GetInstance().AddPluginTechnology(new PluginTechnology(
            kTechnologyVST, [](Dir const& root) { return CollectVSTPlugins(root); },
            [](std::vector<Dir> const& ignored) { return CreateVSTScanContext(ignored); },
            [] { return GetDefaultVSTDirectories(); },
            [](UString const& path) { return GetVSTPathDisplayString(path); }, kUsesDirectories));
    }
} theRegistration;

bool HoldsFile(std::vector<UString> const& paths, UString const& path) {
    return std::any_of(paths.begin(), paths.end(), [&path](UString const& known) {
        return vyncore::filesupport::CompareFileNames(known, path) == 0;
    });
}

} // namespace

boost::intrusive_ptr<AudioFilter> CreateVSTAudioFilter(UString const& id) {
    auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
    auto descriptor = catalogue.GetComponentDescriptorForID(id);
    if (!descriptor)
        descriptor = catalogue.GetComponentDescriptorForID(u"2:" + id);
    if (!descriptor)
        return nullptr;
    UString const path = descriptor->GetLocator().GetPath();
    vyncore::debug::DebugTrace(theCreateTrace, [&] { return u"CreateAudioFilter(), path:" + path; });
    auto const module = FindOrLoadVSTModule(path);
    auto filter = module ? module->CreateAudioFilter(id) : nullptr;
    if (filter)
        filter->SetDisplayName(descriptor->GetName());
    return filter;
}

std::vector<PluginLocator> CollectVSTPlugins(Dir const& root) {
    BannedPluginManager const& bans = BannedPluginManager::GetInstance();
    std::vector<PluginLocator> modules;
    ModuleFileKind const kind{.extension = os::GetModuleExtension(), .otherBundles = u".vst3"};
    for (UString const& path : FindModuleFiles({root.FullPath()}, kind)) {
        PluginLocator const locator(kTechnologyVST, path);
        if (!bans.IsPluginBanned(locator))
            modules.push_back(locator);
    }
    return modules;
}

boost::intrusive_ptr<PluginScanContext> CreateVSTScanContext(std::vector<Dir> const&) {
    return new VSTScanContext;
}

std::vector<UString> GetDefaultVSTDirectories() {
    os::VSTFolders const folders = os::GetVSTFolders();
    std::vector<UString> directories;
    for (UString const& folder : folders.chosen) {
        if (Dir(folder).Exists() && !HoldsFile(directories, Dir(folder).FullPath()))
            directories.push_back(Dir(folder).FullPath());
    }
    if (Dir const system(folders.system); system.Exists() && !HoldsFile(directories, system.FullPath()))
        directories.push_back(system.FullPath());
    bool const listed = std::any_of(directories.begin(), directories.end(), [&](UString const& known) {
        return vyncore::string::EqualsInASCIICase(known, folders.own);
    });
    if (!folders.own.empty() && !listed)
        directories.push_back(folders.own);
    return directories;
}

UString GetVSTPathDisplayString(UString const& path) {
    return path;
}

} // namespace vynaudiofilterhost::vst
