#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vynaudiofilterhost/inventory/ScanProgress.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost::vst {

class VSTPluginModule;

/// A scan of VST 2.x modules, an effect at a step. A module that can't be opened, is refused, throws or yields no
/// effect leaves no trace. Each module is unloaded when it is done.
///
/// Nothing is filed before a module's last effect is done: a scan that is given up in the middle of a module has filed
/// the modules before it.
class VSTScanContext final : public PluginScanContext {
public:
    /// [main-thread]
    VSTScanContext();
    /// [main-thread]
    ~VSTScanContext() override;

    /// @param flag1  shells are looked into; else they are passed over
    /// @param flag2  descriptors say that the effects run on one channel and on two
    /// @param flag3  descriptors are made as internal ones
    /// [main-thread]
    void StartScan(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3) override;

    /// [main-thread]
    bool GetProgress(PluginLocator& locator, vyncore::UString& detail, unsigned long long& index) const override;

    /// [main-thread]
    bool Continue() override;

private:
    using DescriptorPointer = boost::intrusive_ptr<AudioFilterDescriptor>;

    void NextModule();
    DescriptorPointer MakeDescriptor(vyncore::UString const& id) const;
    void FinishModule();

    ScanProgress mProgress;
    bool mScanShells = true;
    bool mForceMonoAndStereo = false;
    bool mInternalFilters = false;
    boost::intrusive_ptr<VSTPluginModule> mModule; ///< null between modules
    boost::intrusive_ptr<PluginModuleInfo> mInfo;
    std::vector<DescriptorPointer> mDescriptors;
};

} // namespace vynaudiofilterhost::vst
