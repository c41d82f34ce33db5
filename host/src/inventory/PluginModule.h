#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <string>
#include <vector>

struct HINSTANCE__;

namespace vynaudiofilterhost {

class AudioFilter;
class PluginModuleInfo;

/// A plug-in file that is, or can be, loaded into the process. The base of the modules of every format, held through
/// boost::intrusive_ptr by the format's module cache and by each filter made from it.
///
/// Life cycle: made unloaded; Load; filters are made; Unload or the end of the object frees the file's code.
/// 1. GetOSModule is not null exactly while the file is loaded.
/// 2. A module that may not unload stays in the process for good once it is loaded, even after the object has gone.
class VYN_API PluginModule : public vyncore::utility::RefCountedObject {
public:
    PluginModule(PluginModule const&) = delete;
    PluginModule& operator=(PluginModule const&) = delete;

    /// Frees the file's code as Unload of this base class does.
    /// [main-thread]
    ~PluginModule() override;

    /// Loads the file's code; on a loaded module it only returns true. False means that the system refused the file
    /// or that the file's own start-up code threw; GetLoadError then has the reason. Never throws.
    ///
    /// Start-up code that throws also blocks the system's loader (IsSystemLoaderBlocked), which is traced at level 0.
    /// An application is spared that by opening files that it doesn't know in a child process first.
    /// [main-thread]
    virtual bool Load();

    /// Frees the file's code when this module may unload, else does nothing.
    /// [main-thread]
    virtual void Unload();

    /// A new filter, suspended, of the class of that ID in this module; null when there is no such class or the
    /// plug-in fails to make one.
    /// [main-thread]
    virtual boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& classID) = 0;

    /// The module's facts; `classIDs` receives the IDs of its classes. Null means that the module is refused.
    /// [main-thread]
    virtual boost::intrusive_ptr<PluginModuleInfo> GetPluginInfo(std::vector<vyncore::UString>& classIDs) = 0;

    /// [any-thread]
    vyncore::UString GetPath() const { return mPath; }

    /// The loaded module, null while none is.
    /// [main-thread]
    HINSTANCE__* GetOSModule() const noexcept { return mModuleHandle; }

    /// Why the last Load failed, in words for a person; empty when it did not fail or none was called.
    /// [main-thread]
    vyncore::UString GetLoadError() const { return mLoadError; }

    /// Why the last GetPluginInfo gave nothing, or a module without classes, in words for a person that go on after the
    /// module's name; empty when nothing is known of it.
    /// [main-thread]
    vyncore::UString GetRefusalReason() const { return mRefusalReason; }

    /// Whether the code of some module threw while the system loaded or freed it. From then on only the thread on which
    /// that happened can load code; every other that asks the system's loader for something waits for ever, be it
    /// inside a library or a plug-in. The process had best be ended soon.
    /// [any-thread]
    static bool IsSystemLoaderBlocked() noexcept;

    /// The locale that plug-ins are told, such as "en_US", which is also what they are told before any call of this.
    /// To be set before the first plug-in is made, since plug-ins may ask on any thread.
    /// [main-thread]
    static void SetLocaleIdentifier(vyncore::UString const& locale);

    /// In UTF-8; stays valid until the next SetLocaleIdentifier.
    /// [any-thread]
    static char const* GetLocaleIdentifier() noexcept { return sLocale.c_str(); }

    /// Colours of the application for plug-ins that ask; the library only keeps the text.
    /// [main-thread]
    static void SetThemeXML(vyncore::UTF8String const& xml) { sThemeXML = xml; }

    /// Empty until set.
    /// [main-thread]
    static vyncore::UTF8String const& GetThemeXML() noexcept { return sThemeXML; }

protected:
    /// With `canUnload` false the code stays in the process once it is loaded.
    PluginModule(vyncore::UString const& path, bool canUnload);

    /// For a format's Load that fails after the system's part went well.
    void SetLoadError(vyncore::UString const& reason) { mLoadError = reason; }

    /// For a format's GetPluginInfo that refuses the module.
    void SetRefusalReason(vyncore::UString const& reason) { mRefusalReason = reason; }

private:
    void FreeModule();

    vyncore::UString mPath;
    HINSTANCE__* mModuleHandle = nullptr;
    bool mCanUnload;
    vyncore::UString mLoadError;
    vyncore::UString mRefusalReason;

    static std::string sLocale;
    static vyncore::UTF8String sThemeXML;
};

} // namespace vynaudiofilterhost
