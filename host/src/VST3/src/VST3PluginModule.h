#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/VST3/src/VST3AudioFilter.h"

#include "pluginterfaces/base/ipluginbase.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost::vst3 {

/// A VST3 module file: once loaded it has run the module's entry point and holds the factory.
///
/// It lives in the VST3ModuleCache, which keeps its code in memory; a filter holds a reference on the factory and not
/// on the module. A module is loaded once, by its first owner.
class VST3PluginModule final : public PluginModule {
public:
    explicit VST3PluginModule(vyncore::UString const& path);

    /// Opens the file, runs its entry point and asks for its factory. False on a module that is loaded already, which
    /// stays as it is, and on every failure, which leaves nothing loaded; GetLoadError tells why.
    /// [main-thread]
    bool Load() override;

    /// Releases the factory, runs the module's exit point and closes the file. Nothing on a module that is not loaded.
    /// [main-thread]
    void Unload() override;

    /// A suspended filter of the class, or null. [main-thread]
    boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& classID) override;

    /// The module's facts and the IDs of its audio classes; null, and no IDs, when it has no class at all and when its
    /// file is banned by name (BannedPluginManager).
    /// [main-thread]
    boost::intrusive_ptr<PluginModuleInfo> GetPluginInfo(std::vector<vyncore::UString>& classIDs) override;

    /// A suspended filter of the class; null when there is no such class, or when its objects can't be made: nothing
    /// that a plug-in throws gets out. [main-thread]
    virtual boost::intrusive_ptr<VST3AudioFilter> CreateVST3Filter(vyncore::UString const& classID);

    /// The catalogue's record of a class, made without an instance: any effect is assumed to run on one channel and on
    /// two. Null without a factory or such a class. [main-thread]
    boost::intrusive_ptr<AudioFilterDescriptor>
    CreateDescriptorFromClassInfo(PluginLocator const& locator, vyncore::UString const& classID, bool internalFilter);

private:
    enum class EntryPoint { kNone, kInitDll, kModuleEntry };

    bool InitModule();
    bool AskForFactory();
    void TerminateModule();
    bool FailToLoad(vyncore::UString const& reason);
    boost::intrusive_ptr<PluginModuleInfo> ReadInfo(std::vector<vyncore::UString>& classIDs);
    std::vector<vyncore::UString> CollectAudioClassIDs(Steinberg::int32 count) const;
    bool FindClass(vyncore::UString const& classID, Steinberg::PClassInfo& classInfo) const;

    Steinberg::IPluginFactory* mFactory = nullptr; ///< holds one reference
    EntryPoint mEntryPoint = EntryPoint::kNone;    ///< what Load has run
};

} // namespace vynaudiofilterhost::vst3
