#pragma once

#include "host/HostTest.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vynaudiofilterhost/Library.h"
#include "vyncore/strings/StringUtils.h"

namespace vyntest {

/// Scans the modules to the end, those of shells as well.
inline void ScanAll(std::vector<PluginLocator> const& locators) {
    boost::intrusive_ptr<PluginModuleScanner> const scanner(new PluginModuleScanner(locators, true, false, false));
    scanner->BeginScan();
    while (scanner->ContinueScan()) {
    }
    scanner->EndScan();
}

/// A test of a format's scan context, with the library started and an inventory that knows no module.
template <class Context>
class ScanContextFixture : public testing::Test {
protected:
    ScanContextFixture() { Initialize(true); }
    ~ScanContextFixture() override {
        inventory.ClearAll(true);
        Terminate();
    }

    static std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> Catalogue() {
        auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
        return {catalogue.InfoBegin(), catalogue.InfoEnd()};
    }

    /// Scans a module to the end; how many filters it has, -1 when it isn't filed. `info` then is what was filed.
    int ScanModule(PluginLocator const& locator, bool shells, bool force, bool internal) {
        inventory.ClearAll(true);
        context.StartScan({locator}, shells, force, internal);
        while (context.Continue()) {
        }
        info = inventory.FindPluginInfo(locator);
        return info ? static_cast<int>(Catalogue().size()) : -1;
    }

    /// "file.so (2/3) 0": the module's file, the detail and the index; behind the end "untouched 99 end".
    std::string Progress() const {
        PluginLocator locator(kTechnologyNone, u"/untouched");
        UString detail;
        unsigned long long index = 99;
        bool const inside = context.GetProgress(locator, detail, index);
        UString const path = locator.GetPath();
        return vyncore::string::UTF16to8(path.substr(path.rfind(u'/') + 1) + detail) + " " + std::to_string(index) +
               (inside ? "" : " end");
    }

    static inline auto& inventory = PluginModuleInfoManager::GetInstance();
    Context context;
    boost::intrusive_ptr<PluginModuleInfo> info;
};

} // namespace vyntest
