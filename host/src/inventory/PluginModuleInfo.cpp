#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"

#include "vyncore/proplist/PropList.h"

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::proplist::PropList;

PluginModuleInfo::PluginModuleInfo(PluginLocator const& locator, UString const& name, UString const& vendor,
                                   unsigned version, TechnologyType type, bool enabled, bool isShell)
    : mLocator(locator),
      mName(name),
      mVendor(vendor),
      mVersion(version),
      mType(type),
      mEnabled(enabled),
      mIsShell(isShell),
      mHasNonSynth(false) {}

PluginModuleInfo::PluginModuleInfo(PropList const& list) {
    Read(list);
}

void PluginModuleInfo::Read(PropList const& list) {
    UString locator;
    list.GetValue("locator", locator);
    mLocator.FromString(locator);
    list.GetValue("name", mName);
    list.GetValue("vendor", mVendor);
    list.GetValue("version", mVersion);
    int type = 0;
    list.GetValue("type", type);
    mType = static_cast<TechnologyType>(type);
    list.GetValue("enabled", mEnabled);
    list.GetValue("isShell", mIsShell);
    list.GetValue("hasNonSynth", mHasNonSynth);
}

void PluginModuleInfo::Write(PropList& list) const {
    list.SetValue("locator", mLocator.ToString());
    list.SetValue("name", mName);
    list.SetValue("vendor", mVendor);
    list.SetValue("version", mVersion);
    list.SetValue("type", static_cast<int>(mType));
    list.SetValue("enabled", mEnabled);
    list.SetValue("isShell", mIsShell);
    list.SetValue("hasNonSynth", mHasNonSynth);
}

} // namespace vynaudiofilterhost
