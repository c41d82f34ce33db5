#include "vynaudiofilterhost/VST3/src/VST3ScanContext.h"

#include "vynaudiofilterhost/inventory/FileScannedModule.h"
#include "vynaudiofilterhost/VST3/src/VST3ModuleCache.h"
#include "vynaudiofilterhost/VST3/src/VST3PluginModule.h"

#include <utility>

namespace vynaudiofilterhost::vst3 {

using vyncore::UString;

VST3ScanContext::VST3ScanContext() = default;

VST3ScanContext::~VST3ScanContext() = default;

void VST3ScanContext::StartScan(std::vector<PluginLocator> const& locators, bool, bool flag2, bool flag3) {
    mUseClassInfo = flag2;
    mInternalFilters = flag3;
    DropModule();
    mProgress.Start(locators);
}

bool VST3ScanContext::GetProgress(PluginLocator& locator, UString& detail, unsigned long long& index) const {
    return mProgress.Report(locator, detail, index);
}

bool VST3ScanContext::Continue() {
    if (!mProgress.HasModule())
        return false;
    if (!mModule)
        OpenModule();
    if (UString const* const classID = mProgress.GetClass()) {
        if (DescriptorPointer descriptor = MakeDescriptor(*classID))
            mDescriptors.push_back(std::move(descriptor));
    }
    if (!mProgress.NextClass()) {
        FinishModule();
        mProgress.NextModule();
    }
    return mProgress.HasModule();
}

void VST3ScanContext::OpenModule() {
    mModule = FindOrLoadVST3Module(mProgress.GetModule().GetPath());
    if (!mModule)
        return;
    std::vector<UString> classIDs;
    mInfo = mModule->GetPluginInfo(classIDs);
    mProgress.SetClasses(std::move(classIDs));
}

VST3ScanContext::DescriptorPointer VST3ScanContext::MakeDescriptor(UString const& classID) const {
    try {
        PluginLocator const& locator = mProgress.GetModule();
        if (mUseClassInfo)
            return mModule->CreateDescriptorFromClassInfo(locator, classID, mInternalFilters);
        auto const filter = mModule->CreateAudioFilter(classID);
        return filter ? filter->CreateFilterDescriptor(locator, mInternalFilters) : nullptr;
    } catch (...) {
        // The plug-in's own: this class is lost, and the scan isn't.
        return nullptr;
    }
}

void VST3ScanContext::FinishModule() {
    FileScannedModule(mInfo, mDescriptors);
    DropModule();
}

void VST3ScanContext::DropModule() {
    mInfo.reset();
    mDescriptors.clear();
    mModule.reset();
}

} // namespace vynaudiofilterhost::vst3
