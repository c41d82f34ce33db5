#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"

#include "vyncore/proplist/PropList.h"

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::proplist::PropList;
using vyncore::utility::Guid;

AudioFilterDescriptor::AudioFilterDescriptor(UString const& name, unsigned version, AudioFilterCategory category,
                                             UString const& uniqueID, Guid const& factoryGuid, bool isSynth,
                                             bool supportsThreadSafeInitialization, bool dynamicChannelizationDisabled)
    : mLocator(kTechnologyInternal, UString()),
      mName(name),
      mVendor(u"Tolve Systems"),
      mVersion(version),
      mCategory(category),
      mUniqueID(uniqueID),
      mFactoryGuid(factoryGuid),
      mSynth(isSynth),
      mSupportsThreadSafeInitialization(supportsThreadSafeInitialization),
      mDynamicChannelizationDisabled(dynamicChannelizationDisabled) {}

AudioFilterDescriptor::AudioFilterDescriptor(PluginLocator const& locator, UString const& name, UString const& vendor,
                                             unsigned version, AudioFilterCategory category, UString const& uniqueID,
                                             Guid const& factoryGuid, bool isSynth)
    : mLocator(locator),
      mName(name),
      mVendor(vendor),
      mVersion(version),
      mCategory(category),
      mUniqueID(uniqueID),
      mFactoryGuid(factoryGuid),
      mSynth(isSynth) {}

AudioFilterDescriptor::AudioFilterDescriptor(PropList const& list) {
    Read(list);
}

UString AudioFilterDescriptor::GetCategoryName() const {
    return AudioFilterCategoryDisplayName(mCategory);
}

void AudioFilterDescriptor::Read(PropList const& list) {
    UString locator;
    list.GetValue("locator", locator);
    mLocator.FromString(locator);
    list.GetValue("name", mName);
    list.GetValue("vendor", mVendor);
    list.GetValue("version", mVersion);
    int category = 0;
    list.GetValue("category", category);
    mCategory = static_cast<AudioFilterCategory>(category);
    list.GetValue("id", mUniqueID);
    UString factoryGuid;
    list.GetValue("factory_guid", factoryGuid);
    mFactoryGuid = Guid::StringToGUID(factoryGuid);
    list.GetValue("enabled", mEnabled);
    list.GetValue("synth", mSynth);
    list.GetValue("mono", mSupportsMono);
    list.GetValue("stereo", mSupportsStereo);
}

void AudioFilterDescriptor::Write(PropList& list) const {
    list.SetValue("locator", mLocator.ToString());
    list.SetValue("name", mName);
    list.SetValue("vendor", mVendor);
    list.SetValue("version", mVersion);
    list.SetValue("category", static_cast<int>(mCategory));
    list.SetValue("id", mUniqueID);
    list.SetValue("factory_guid", mFactoryGuid.AsString());
    list.SetValue("enabled", mEnabled);
    list.SetValue("synth", mSynth);
    list.SetValue("mono", mSupportsMono);
    list.SetValue("stereo", mSupportsStereo);
}

bool AudioFilterDescriptor::operator==(AudioFilterDescriptor const& other) const {
    return mName == other.mName && mVendor == other.mVendor && mVersion == other.mVersion &&
           mCategory == other.mCategory && mUniqueID == other.mUniqueID && mFactoryGuid == other.mFactoryGuid &&
           mEnabled == other.mEnabled && mSynth == other.mSynth && mSupportsMono == other.mSupportsMono &&
           mSupportsStereo == other.mSupportsStereo && mSupports51 == other.mSupports51 &&
           mSupportsMulti == other.mSupportsMulti &&
           mSupportsThreadSafeInitialization == other.mSupportsThreadSafeInitialization &&
           mSupportsGanging == other.mSupportsGanging &&
           mDynamicChannelizationDisabled == other.mDynamicChannelizationDisabled;
}

} // namespace vynaudiofilterhost
