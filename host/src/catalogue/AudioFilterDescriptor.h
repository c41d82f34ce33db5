#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterCategory.h"
#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/Guid.h"
#include "vyncore/utility/RefCountedObject.h"

namespace vyncore::proplist {
class PropList;
}

namespace vynaudiofilterhost {

/// The catalogue's record of one filter that the library can create: where it comes from, how to show it, how to
/// create it, what it can do. Held through boost::intrusive_ptr by the descriptor manager. It never loads or creates
/// anything itself.
///
/// 1. The unique ID is the key of the catalogue. A plug-in's begins with its technology as a decimal number and a
///    colon; an internal filter's is whatever the application chose.
/// 2. Only the setters and Read change a descriptor.
class VYN_API AudioFilterDescriptor : public vyncore::utility::RefCountedObject {
public:
    /// A filter of the application itself: technology internal, no path, the library's own vendor name.
    /// [main-thread]
    AudioFilterDescriptor(vyncore::UString const& name, unsigned version, AudioFilterCategory category,
                          vyncore::UString const& uniqueID, vyncore::utility::Guid const& factoryGuid, bool isSynth,
                          bool supportsThreadSafeInitialization, bool dynamicChannelizationDisabled);

    /// A filter of a plug-in module.
    /// [main-thread]
    AudioFilterDescriptor(PluginLocator const& locator, vyncore::UString const& name, vyncore::UString const& vendor,
                          unsigned version, AudioFilterCategory category, vyncore::UString const& uniqueID,
                          vyncore::utility::Guid const& factoryGuid, bool isSynth);

    /// A stored filter: empty but enabled and with ganging, then what the list holds.
    /// [main-thread]
    explicit AudioFilterDescriptor(vyncore::proplist::PropList const& list);

    AudioFilterDescriptor(AudioFilterDescriptor const&) = delete;
    AudioFilterDescriptor& operator=(AudioFilterDescriptor const&) = delete;
    ~AudioFilterDescriptor() override = default;

    /// [main-thread]
    PluginLocator const& GetLocator() const noexcept { return mLocator; }
    /// [main-thread]
    vyncore::UString const& GetName() const noexcept { return mName; }
    /// [main-thread]
    vyncore::UString const& GetVendorString() const noexcept { return mVendor; }
    /// The version as the source reports it.
    /// [main-thread]
    unsigned GetVersion() const noexcept { return mVersion; }
    /// [main-thread]
    AudioFilterCategory GetCategory() const noexcept { return mCategory; }
    /// The category's name to show, in the user's language; empty for one that isn't shown.
    /// [main-thread]
    vyncore::UString GetCategoryName() const;
    /// [main-thread]
    vyncore::UString const& GetUniqueID() const noexcept { return mUniqueID; }
    /// Names the creation function in the filter factory.
    /// [main-thread]
    vyncore::utility::Guid GetFactoryGuid() const noexcept { return mFactoryGuid; }

    /// True exactly when the locator's technology is internal, whatever the category says.
    /// [main-thread]
    bool IsInternal() const noexcept { return mLocator.GetTechnologyType() == kTechnologyInternal; }
    /// Whether the filter may be offered and created.
    /// [main-thread]
    bool IsEnabled() const noexcept { return mEnabled; }
    /// Whether the filter is an instrument.
    /// [main-thread]
    bool IsSynth() const noexcept { return mSynth; }
    /// Whether the filter can run on one channel.
    /// [main-thread]
    bool GetSupportsMono() const noexcept { return mSupportsMono; }
    /// Whether the filter can run on two channels.
    /// [main-thread]
    bool GetSupportsStereo() const noexcept { return mSupportsStereo; }
    /// Whether the filter can run on 5.1. Not stored.
    /// [main-thread]
    bool GetSupports51() const noexcept { return mSupports51; }
    /// Whether the filter can run on any other number of channels. Not stored.
    /// [main-thread]
    bool GetSupportsMulti() const noexcept { return mSupportsMulti; }
    /// Whether the filter may be constructed off the main thread. Not stored.
    /// [main-thread]
    bool GetSupportsThreadSafeInitialization() const noexcept { return mSupportsThreadSafeInitialization; }
    /// Whether several channels of the filter can be operated as one. Not stored.
    /// [main-thread]
    bool GetSupportsGanging() const noexcept { return mSupportsGanging; }
    /// Whether the filter's channel layout must stay while it is in use. Not stored.
    /// [main-thread]
    bool IsDynamicChannelizationDisabled() const noexcept { return mDynamicChannelizationDisabled; }

    /// [main-thread]
    void SetEnabled(bool enabled) noexcept { mEnabled = enabled; }
    /// [main-thread]
    void SetSupportsMono(bool supports) noexcept { mSupportsMono = supports; }
    /// [main-thread]
    void SetSupportsStereo(bool supports) noexcept { mSupportsStereo = supports; }
    /// [main-thread]
    void SetSupports51(bool supports) noexcept { mSupports51 = supports; }
    /// [main-thread]
    void SetSupportsMulti(bool supports) noexcept { mSupportsMulti = supports; }
    /// [main-thread]
    void SetSupportsGanging(bool supports) noexcept { mSupportsGanging = supports; }

    /// Takes what the list holds. A missing key leaves its field alone, but a missing "locator" or "category" clears
    /// it, and a missing or malformed "factory_guid" gives the zero GUID.
    /// [main-thread]
    void Read(vyncore::proplist::PropList const& list);

    /// Stores the fields that are not marked as unstored above.
    /// [main-thread]
    void Write(vyncore::proplist::PropList& list) const;

    /// Compares every field but the locator: the same filter in a module that has moved is equal.
    /// [main-thread]
    bool operator==(AudioFilterDescriptor const& other) const;

private:
    PluginLocator mLocator;
    vyncore::UString mName;
    vyncore::UString mVendor;
    unsigned mVersion = 0;
    AudioFilterCategory mCategory = kCategoryNone;
    vyncore::UString mUniqueID;
    vyncore::utility::Guid mFactoryGuid;
    bool mEnabled = true;
    bool mSynth = false;
    bool mSupportsMono = false;
    bool mSupportsStereo = false;
    bool mSupports51 = false;
    bool mSupportsMulti = false;
    bool mSupportsThreadSafeInitialization = false;
    bool mSupportsGanging = true;
    bool mDynamicChannelizationDisabled = false;
};

} // namespace vynaudiofilterhost
