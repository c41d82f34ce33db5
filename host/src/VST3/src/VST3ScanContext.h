#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vynaudiofilterhost/inventory/ScanProgress.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost::vst3 {

class VST3PluginModule;

/// A scan of VST3 modules, a class at a step. A module that can't be opened or is refused takes one step and leaves no
/// trace; of one that throws or fails for a class, that class is left out. Modules stay loaded until the library stops
/// (VST3ModuleCache).
///
/// Nothing is filed before a module's last class is done: a scan that is given up in the middle of a module has filed
/// the modules before it.
class VST3ScanContext final : public PluginScanContext {
public:
    /// [main-thread]
    VST3ScanContext();
    /// [main-thread]
    ~VST3ScanContext() override;

    /// @param flag2  descriptors are made from what the module says of its classes, without an instance
    /// @param flag3  descriptors are made as internal ones
    /// [main-thread]
    void StartScan(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3) override;

    /// [main-thread]
    bool GetProgress(PluginLocator& locator, vyncore::UString& detail, unsigned long long& index) const override;

    /// [main-thread]
    bool Continue() override;

private:
    using DescriptorPointer = boost::intrusive_ptr<AudioFilterDescriptor>;

    void OpenModule();
    DescriptorPointer MakeDescriptor(vyncore::UString const& classID) const;
    void FinishModule();
    void DropModule();

    ScanProgress mProgress;
    bool mUseClassInfo = false;
    bool mInternalFilters = false;
    boost::intrusive_ptr<VST3PluginModule> mModule; ///< null between modules
    boost::intrusive_ptr<PluginModuleInfo> mInfo;
    std::vector<DescriptorPointer> mDescriptors;
};

} // namespace vynaudiofilterhost::vst3
