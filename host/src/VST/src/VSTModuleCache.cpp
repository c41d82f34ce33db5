#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"

#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vyncore/filesupport/File.h"

#include <exception>
#include <filesystem>
#include <map>
#include <utility>

namespace vynaudiofilterhost::vst {

using vyncore::UString;

namespace {

/// Ordered by UTF-16 code units: two forms of one path are two entries.
using VSTModuleCache = std::map<UString, boost::intrusive_ptr<VSTPluginModule>>;

// A plain pointer: at the end of a process that never stopped the library, the plug-ins' own statics may have gone
// before ours, and unloading would run into them.
VSTModuleCache* theCache = nullptr;

boost::intrusive_ptr<VSTPluginModule> Fail(UString* reason, UString const& text) {
    if (reason)
        *reason = text;
    return nullptr;
}

} // namespace

void CreateVSTModuleCache() {
    DestroyVSTModuleCache();
    theCache = new VSTModuleCache;
}

void DestroyVSTModuleCache() {
    delete std::exchange(theCache, nullptr);
}

boost::intrusive_ptr<VSTPluginModule> FindOrLoadVSTModule(UString const& path, UString* reason) {
    if (!theCache)
        return Fail(reason, u"the library is not initialised");
    auto const known = theCache->find(path);
    boost::intrusive_ptr<VSTPluginModule> module = known != theCache->end() ? known->second : new VSTPluginModule(path);
    if (!module->GetOSModule() && !module->Load())
        return Fail(reason, module->GetLoadError());
    if (known == theCache->end())
        theCache->emplace(path, module);
    return module;
}

boost::intrusive_ptr<VSTPluginModule> OpenVSTModule(UString const& path, UString& reason) {
    UString whole;
    try {
        // One form for every way to write a path: the cache tells modules apart by it.
        whole = std::filesystem::absolute(std::filesystem::path(path)).lexically_normal().u16string();
    } catch (std::exception const&) {
        reason = u"the path is no text";
        return nullptr;
    }
    // What goes up from a link leads elsewhere than its text says.
    auto module = FindOrLoadVSTModule(vyncore::filesupport::File(whole).Exists() ? whole : path, &reason);
    if (module)
        module->KeepLoaded();
    return module;
}

} // namespace vynaudiofilterhost::vst
