#include "vynaudiofilterhost/VST3/src/VST3Bundle.h"

#include "os/BundleFolder.h"
#include "vynaudiofilterhost/inventory/ModuleFileSearch.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"
#include "vyncore/strings/StringUtils.h"

#include <filesystem>
#include <vector>

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;

namespace {

std::vector<UString> ListModules(Dir const& folder) {
    UString const extension = os::GetBundleModuleExtension();
    std::vector<UString> modules;
    auto const upper = [](UString const& text) { return vyncore::string::UpperCase(text); };
    for (auto file = folder.BeginFiles(); file != folder.EndFiles(); ++file) {
        UString const name = file->GetName();
        if (name.size() > extension.size() && upper(name).ends_with(upper(extension)))
            modules.push_back(file->FullPath());
    }
    return modules;
}

UString TitleOfFolder(UString path) {
    while (path.size() > 1 && (path.back() == u'/' || path.back() == u'\\'))
        path.pop_back();
    return File(path).GetTitle();
}

} // namespace

UString FindModuleInBundle(UString const& folder, UString& reason) {
    Dir const contents(Dir(folder), u"Contents");
    Dir const binaries(contents, os::GetBundleFolderName());
    if (!contents.Exists()) {
        reason = u"the folder is no plug-in bundle: it has no Contents";
        return UString();
    }
    if (!binaries.Exists()) {
        reason = u"the bundle has no module for this machine (" + os::GetBundleFolderName() + u")";
        return UString();
    }
    std::vector<UString> const modules = ListModules(binaries);
    for (UString const& module : modules) {
        if (File(module).GetTitle() == TitleOfFolder(folder))
            return module;
    }
    if (modules.size() == 1)
        return modules.front();
    reason = modules.empty() ? u"the bundle's folder for this machine holds no module"
                             : u"the bundle holds several modules; name one of them";
    return UString();
}

bool IsVST3Path(UString const& path) {
    return LiesInBundle(path, u".vst3");
}

boost::intrusive_ptr<PluginModule> OpenVST3Module(UString const& path, UString& reason) {
    // One form for every way to write a path: the cache tells modules apart by it.
    UString const whole = std::filesystem::absolute(std::filesystem::path(path)).lexically_normal().u16string();
    if (!Dir(whole).Exists())
        return FindOrLoadVST3Module(whole, &reason);
    UString const file = FindModuleInBundle(whole, reason);
    return file.empty() ? nullptr : FindOrLoadVST3Module(file, &reason);
}

} // namespace vynaudiofilterhost::vst3
