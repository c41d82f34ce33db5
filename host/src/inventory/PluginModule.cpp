#include "vynaudiofilterhost/inventory/PluginModule.h"

#include "os/ModuleLoader.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/strings/StringUtils.h"

#include <exception>

namespace vynaudiofilterhost {

using vyncore::UString;

namespace {

/// The start-up code of a plug-in runs inside the system's loader and may throw through it.
HINSTANCE__* OpenGuarded(UString const& path, std::string& reason) {
    try {
        return os::OpenModule(path, reason);
    } catch (std::exception const& error) {
        reason = std::string("an exception left the module while it was loaded: ") + error.what();
    } catch (...) {
        reason = "an exception left the module while it was loaded";
    }
    return nullptr;
}

void TraceBlockedLoader(UString const& path) {
    vyncore::debug::Trace(0, "PluginModule",
                          u"code of " + path + u" threw through the system's loader; every other thread that needs " +
                              u"the loader from here on waits for ever");
}

} // namespace

std::string PluginModule::sLocale = "en_US";
vyncore::UTF8String PluginModule::sThemeXML;

PluginModule::PluginModule(UString const& path, bool canUnload) : mPath(path), mCanUnload(canUnload) {}

PluginModule::~PluginModule() {
    FreeModule();
}

bool PluginModule::Load() {
    if (mModuleHandle)
        return true;
    std::string reason;
    bool const wasBlocked = IsSystemLoaderBlocked();
    mModuleHandle = OpenGuarded(mPath, reason);
    if (IsSystemLoaderBlocked() && !wasBlocked)
        TraceBlockedLoader(mPath);
    mLoadError = mModuleHandle ? UString() : vyncore::string::UTF8to16(reason);
    return mModuleHandle != nullptr;
}

void PluginModule::Unload() {
    FreeModule();
}

bool PluginModule::IsSystemLoaderBlocked() noexcept {
    return os::IsLoaderBlocked();
}

void PluginModule::SetLocaleIdentifier(UString const& locale) {
    sLocale = vyncore::string::UTF16to8(locale);
}

void PluginModule::FreeModule() {
    if (!mCanUnload || !mModuleHandle)
        return;
    bool const wasBlocked = IsSystemLoaderBlocked();
    os::CloseModule(mModuleHandle);
    mModuleHandle = nullptr;
    if (IsSystemLoaderBlocked() && !wasBlocked)
        TraceBlockedLoader(mPath);
}

} // namespace vynaudiofilterhost
