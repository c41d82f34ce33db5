#pragma once

#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <memory>
#include <vector>

namespace vynaudiofilterhost::vst {

class VSTAudioFilter;

/// A VST 2.x module file: once loaded it knows the entry function, which makes effects.
///
/// It lives in the VSTModuleCache and is used for every effect of the file. It stays loaded for as long as a filter of
/// its own lives, whoever asks for it to be unloaded.
class VSTPluginModule final : public PluginModule {
public:
    /// Doesn't load. [main-thread]
    explicit VSTPluginModule(vyncore::UString const& path);

    /// Opens the file and looks for its entry function. False on a module that is loaded already, which stays as it is,
    /// and on every failure, which leaves nothing loaded; GetLoadError tells why.
    /// [main-thread]
    bool Load() override;

    /// Closes the file, unless a filter of it lives or somebody relies on it. Nothing on a module that is not loaded.
    /// [main-thread]
    void Unload() override;

    /// From here on the module stays loaded for as long as the object lives.
    /// [main-thread]
    void KeepLoaded() noexcept { mKeptLoaded = true; }

    /// A suspended filter of the effect with the number in the ID, with or without what stands before its colon; null
    /// when the module makes none, or one that can't be hosted. What the entry function throws goes to the caller.
    /// [main-thread]
    boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& id) override;

    /// The module's facts, and the IDs of its effects: of a shell those that it lists. Null, and no IDs, when the
    /// module makes no effect, one that can't be hosted or one that is banned by name; GetRefusalReason tells which.
    /// What the entry function throws goes to the caller, as does what a shell throws.
    /// [main-thread]
    boost::intrusive_ptr<PluginModuleInfo> GetPluginInfo(std::vector<vyncore::UString>& ids) override;

    /// Whether the last GetPluginInfo found a shell, a module of several effects.
    /// [main-thread]
    bool IsShell() const noexcept { return mShell; }

private:
    AEffect* MakeEffect(std::int32_t number);
    boost::intrusive_ptr<PluginModuleInfo> ReadInfo(AEffect* effect, std::vector<vyncore::UString>& ids);
    bool IsBanned(AEffect const& effect, unsigned version) const;
    void ListShell(AEffect* effect, std::vector<vyncore::UString>& ids) const;
    boost::intrusive_ptr<PluginModuleInfo> Refuse(char16_t const* reason);
    std::shared_ptr<void const> Hold();

    EntryFunction mEntry = nullptr;
    bool mShell = false;
    bool mKeptLoaded = false;
    std::weak_ptr<void const> mHold; ///< that the living filters share
};

} // namespace vynaudiofilterhost::vst
