#include "vynaudiofilterhost/inventory/ScanProgress.h"

#include "vyncore/strings/StringStreams.h"

#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;

void ScanProgress::Start(std::vector<PluginLocator> const& locators) {
    mLocators = locators;
    mModuleIndex = 0;
    SetClasses({});
}

void ScanProgress::SetClasses(std::vector<UString> classIDs) {
    mClassIDs = std::move(classIDs);
    mClassIndex = 0;
}

UString const* ScanProgress::GetClass() const noexcept {
    return mClassIndex < mClassIDs.size() ? &mClassIDs[mClassIndex] : nullptr;
}

bool ScanProgress::NextClass() noexcept {
    if (mClassIndex < mClassIDs.size())
        ++mClassIndex;
    return mClassIndex < mClassIDs.size();
}

void ScanProgress::NextModule() noexcept {
    ++mModuleIndex;
    mClassIDs.clear();
    mClassIndex = 0;
}

bool ScanProgress::Report(PluginLocator& locator, UString& detail, unsigned long long& index) const {
    if (!HasModule())
        return false;
    locator = GetModule();
    vyncore::oUTF16StringStream text;
    if (mClassIDs.size() > 1)
        text << u" (" << mClassIndex + 1 << u"/" << mClassIDs.size() << u")";
    detail = text.str();
    index = mModuleIndex;
    return true;
}

} // namespace vynaudiofilterhost
