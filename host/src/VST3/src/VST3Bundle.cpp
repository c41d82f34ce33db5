#include "vynaudiofilterhost/VST3/src/VST3Bundle.h"

#include "os/BundleFolder.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/filesupport/Dir.h"
#include "vyncore/filesupport/File.h"

#include <vector>

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;
using vyncore::filesupport::Dir;
using vyncore::filesupport::File;

namespace {

std::vector<UString> ListModules(Dir const& folder) {
    UString const extension = os::GetBundleModuleExtension();
    std::vector<UString> modules;
    for (auto file = folder.BeginFiles(); file != folder.EndFiles(); ++file) {
        UString const name = file->GetName();
        if (name.size() > extension.size() && name.ends_with(extension))
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
    File const usual(binaries, TitleOfFolder(folder) + os::GetBundleModuleExtension());
    if (usual.Exists())
        return usual.FullPath();
    std::vector<UString> const modules = ListModules(binaries);
    if (modules.size() == 1)
        return modules.front();
    reason = modules.empty() ? u"the bundle's folder for this machine holds no module"
                             : u"the bundle holds several modules; name one of them";
    return UString();
}

boost::intrusive_ptr<PluginModule> OpenVST3Module(UString const& path, UString& reason) {
    if (!Dir(path).Exists())
        return FindOrLoadVST3Module(path, &reason);
    UString const file = FindModuleInBundle(path, reason);
    return file.empty() ? nullptr : FindOrLoadVST3Module(file, &reason);
}

} // namespace vynaudiofilterhost::vst3
