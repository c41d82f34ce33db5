#include "vynaudiofilterhost/VST/src/VSTScanContext.h"

#include "vynaudiofilterhost/inventory/FileScannedModule.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vynaudiofilterhost/VST/src/VSTModuleCache.h"
#include "vynaudiofilterhost/VST/src/VSTPluginModule.h"
#include "vyncore/debug/Trace.h"

#include <utility>

namespace vynaudiofilterhost::vst {

using vyncore::UString;
using vyncore::debug::DebugTrace;

namespace {

vyncore::debug::TracePoint theTrace(6, "VSTScanContext");

} // namespace

VSTScanContext::VSTScanContext() = default;

VSTScanContext::~VSTScanContext() = default;

void VSTScanContext::StartScan(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3) {
    mScanShells = flag1;
    mForceMonoAndStereo = flag2;
    mInternalFilters = flag3;
    mProgress.Start(locators);
    mInfo.reset();
    mDescriptors.clear();
    mModule.reset();
}

bool VSTScanContext::GetProgress(PluginLocator& locator, UString& detail, unsigned long long& index) const {
    return mProgress.Report(locator, detail, index);
}

bool VSTScanContext::Continue() {
    DebugTrace(theTrace, [] { return "Continue()"; });
    if (mProgress.HasModule()) {
        if (!mModule)
            NextModule();
        if (UString const* const id = mModule ? mProgress.GetClass() : nullptr) {
            if (DescriptorPointer descriptor = MakeDescriptor(*id))
                mDescriptors.push_back(std::move(descriptor));
        }
        if (!mModule || !mProgress.NextClass()) {
            FinishModule();
            mProgress.NextModule();
        }
    }
    DebugTrace(theTrace, [] { return "/Continue()"; });
    return mProgress.HasModule();
}

void VSTScanContext::NextModule() {
    DebugTrace(theTrace, [] { return "NextModule"; });
    auto const module = FindOrLoadVSTModule(mProgress.GetModule().GetPath());
    if (!module)
        return;
    std::vector<UString> ids;
    try {
        mInfo = module->GetPluginInfo(ids);
    } catch (...) {
        // A module that throws when it is asked who it is, is refused.
        ids.clear();
    }
    if (module->IsShell() && !mScanShells) {
        DebugTrace(theTrace, [] { return "Ignoring VST2.x shell"; });
        mInfo.reset();
        module->Unload();
        return;
    }
    mProgress.SetClasses(std::move(ids));
    mModule = module;
}

VSTScanContext::DescriptorPointer VSTScanContext::MakeDescriptor(UString const& id) const {
    try {
        auto const filter = mModule->CreateAudioFilter(id);
        DescriptorPointer descriptor =
            filter ? filter->CreateFilterDescriptor(mProgress.GetModule(), mInternalFilters) : nullptr;
        if (descriptor && mForceMonoAndStereo) {
            descriptor->SetSupportsMono(true);
            descriptor->SetSupportsStereo(true);
        }
        return descriptor;
    } catch (...) {
        // The effect's own: it is lost, and the scan isn't.
        return nullptr;
    }
}

void VSTScanContext::FinishModule() {
    if (!mDescriptors.empty())
        FileScannedModule(mInfo, mDescriptors);
    mInfo.reset();
    mDescriptors.clear();
    if (mModule)
        mModule->Unload();
    mModule.reset();
}

} // namespace vynaudiofilterhost::vst
