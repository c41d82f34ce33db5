#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"

#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"
#include "vyncore/utility/FileUtils.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;

namespace {

/// Ordered by UTF-16 code units: two forms of one path are two entries.
class VST3ModuleCache {
public:
    VST3ModuleCache() = default;
    VST3ModuleCache(VST3ModuleCache const&) = delete;
    VST3ModuleCache& operator=(VST3ModuleCache const&) = delete;

    ~VST3ModuleCache() {
        for (auto const& [path, module] : mModules)
            module->Unload();
    }

    boost::intrusive_ptr<VST3PluginModule> Find(UString const& path) const {
        auto const found = mModules.find(path);
        return found != mModules.end() ? found->second : nullptr;
    }

    void Add(boost::intrusive_ptr<VST3PluginModule> const& module) { mModules.emplace(module->GetPath(), module); }

private:
    std::map<UString, boost::intrusive_ptr<VST3PluginModule>> mModules;
};

// A plain pointer: at the end of a process that never stopped the library, the plug-ins' own statics may have gone
// before ours, and unloading would run into them.
VST3ModuleCache* theCache = nullptr;

// The path as it stands as well: on a system whose names may hold a backslash, the plain form is another file.
bool StillExists(UString const& path) {
    UString plain = path;
    NormalizeModulePath(plain);
    return vyncore::utility::FileUtils::FileExists(plain) || vyncore::utility::FileUtils::FileExists(path);
}

boost::intrusive_ptr<VST3PluginModule> Fail(UString* reason, UString const& text) {
    if (reason)
        *reason = text;
    return nullptr;
}

bool StartsWith(UString const& text, UString const& start) {
    return text.compare(0, start.size(), start) == 0;
}

} // namespace

void CreateVST3ModuleCache() {
    theCache = new VST3ModuleCache;
}

void DestroyVST3ModuleCache() {
    delete std::exchange(theCache, nullptr);
}

boost::intrusive_ptr<VST3PluginModule> FindOrLoadVST3Module(UString const& path, UString* reason) {
    if (!theCache)
        return Fail(reason, u"the library is not initialised");
    if (auto const known = theCache->Find(path))
        return StillExists(path) ? known : Fail(reason, u"the module's file has gone");
    boost::intrusive_ptr<VST3PluginModule> const module(new VST3PluginModule(path));
    if (!module->Load())
        return Fail(reason, module->GetLoadError());
    theCache->Add(module);
    return module;
}

void NormalizeModulePath(UString& path) {
    std::replace(path.begin(), path.end(), u'/', u'\\');
    if (StartsWith(path, u"\\\\?\\UNC\\"))
        path.erase(2, 6);
    if (StartsWith(path, u"\\\\?\\"))
        path.erase(0, 4);
    for (std::size_t doubled = path.find(u"\\\\", 1); doubled != UString::npos; doubled = path.find(u"\\\\", doubled))
        path.erase(doubled, 1);
}

} // namespace vynaudiofilterhost::vst3
