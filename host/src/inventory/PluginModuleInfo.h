#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// What the library remembers of a module between runs, whether it is loaded or not. Held through
/// boost::intrusive_ptr by the inventory. It never touches the file that it tells of.
class VYN_API PluginModuleInfo : public vyncore::utility::RefCountedObject {
public:
    /// A module just looked at: not yet known to hold anything but instruments.
    /// [main-thread]
    PluginModuleInfo(PluginLocator const& locator, vyncore::UString const& name, vyncore::UString const& vendor,
                     unsigned version, TechnologyType type, bool enabled, bool isShell);

    /// A stored module: neither enabled nor a shell, and holding effects, unless the list says otherwise.
    /// [main-thread]
    explicit PluginModuleInfo(vyncore::proplist::PropList const& list);

    PluginModuleInfo(PluginModuleInfo const&) = delete;
    PluginModuleInfo& operator=(PluginModuleInfo const&) = delete;
    ~PluginModuleInfo() override = default;

    /// [main-thread]
    PluginLocator GetLocator() const { return mLocator; }
    /// [main-thread]
    vyncore::UString GetName() const { return mName; }
    /// [main-thread]
    vyncore::UString GetVendor() const { return mVendor; }
    /// [main-thread]
    unsigned GetVersion() const noexcept { return mVersion; }

    /// The technology that the module was scanned as; a field of its own beside the locator's.
    /// [main-thread]
    TechnologyType GetType() const noexcept { return mType; }

    /// Whether the user allows this module.
    /// [main-thread]
    bool IsEnabled() const noexcept { return mEnabled; }

    /// Whether the module is a shell, one file that holds several effects.
    /// [main-thread]
    bool IsShell() const noexcept { return mIsShell; }

    /// Whether at least one filter of the module isn't an instrument.
    /// [main-thread]
    bool HasAnyNonSynthEffect() const noexcept { return mHasNonSynth; }

    /// [main-thread]
    void SetEnabled(bool enabled) noexcept { mEnabled = enabled; }
    /// [main-thread]
    void SetHasAnyNonSynthEffect(bool hasNonSynth) noexcept { mHasNonSynth = hasNonSynth; }

    /// Takes what the list holds. A missing key leaves its field alone, but a missing "locator" or "type" clears it.
    /// [main-thread]
    void Read(vyncore::proplist::PropList const& list);

    /// Stores every field.
    /// [main-thread]
    void Write(vyncore::proplist::PropList& list) const;

private:
    PluginLocator mLocator;
    vyncore::UString mName;
    vyncore::UString mVendor;
    unsigned mVersion = 0;
    TechnologyType mType = kTechnologyNone;
    bool mEnabled = false;
    bool mIsShell = false;
    bool mHasNonSynth = true;
};

} // namespace vynaudiofilterhost
