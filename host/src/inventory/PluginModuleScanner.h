#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vynaudiofilterhost/inventory/PluginScanContext.h"
#include "vynaudiofilterhost/inventory/PluginTechnology.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vyncore/utility/RefCountedObject.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstdint>
#include <vector>

namespace vynaudiofilterhost {

/// One scan of plug-in modules, in steps that the application asks for. It divides the modules among the technologies
/// (PluginModuleInfoManager) and lets their contexts do the work, one technology after the other in the order of their
/// types. It knows nothing of formats, saves nothing and bans nothing. Held through boost::intrusive_ptr.
///
/// Life: made; BeginScan; ContinueScan until it gives false; EndScan. Whoever wants to stop stops calling: what is
/// finished stays in the inventory and the catalogue, and the module that is open goes with the scanner. A second run
/// finds nothing left to do.
///
/// A plug-in that ends the process ends it within ContinueScan. GetCurrentProgressInfo names the module that the next
/// step is about, so that it can be put on the ban list (BannedPluginManager) before it is opened.
class VYN_API PluginModuleScanner : public vyncore::utility::RefCountedObject {
public:
    /// @param locators  the modules to scan. Those of a technology are scanned in this order; one of a technology that
    ///                  isn't there is left out.
    /// @param flag1  VST 2.x: look into shells; otherwise they are dropped
    /// @param flag2  VST 2.x: take each filter for one that runs on one channel and on two; VST3: make no instances,
    /// and
    ///               go by what the module says of its classes
    /// @param flag3  make all descriptors internal ones
    /// Throws boost::bad_function_call when a technology has no function that makes contexts.
    /// [main-thread]
    PluginModuleScanner(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3);

    PluginModuleScanner(PluginModuleScanner const&) = delete;
    PluginModuleScanner& operator=(PluginModuleScanner const&) = delete;
    /// [main-thread]
    ~PluginModuleScanner() override;

    /// Goes to the first technology.
    /// [main-thread]
    void BeginScan();

    /// Does one step, which is a class or a module at most. Whether there is more to do. What a context throws goes to
    /// the caller, and the scan stands where it stood.
    /// [main-thread]
    bool ContinueScan();

    /// Enables the modules that were enabled when the scanner was made and that are still known.
    /// [main-thread]
    void EndScan();

    /// What the next step is about. False, and nothing is written, behind the end.
    /// @param locator  the module
    /// @param detail   a text to show behind it, such as " (3/5)", or empty
    /// @param current  which module of all it is, counted from 1
    /// @param total    how many modules there are
    /// [main-thread]
    bool GetCurrentProgressInfo(PluginLocator& locator, vyncore::UString& detail, int& current, int& total) const;

private:
    struct ScanEntry {
        boost::intrusive_ptr<PluginTechnology> technology;
        boost::intrusive_ptr<PluginScanContext> context;
        std::uint64_t moduleCount;
    };

    std::uint64_t mCurrentEntry = 0;
    std::uint64_t mModulesDone = 0;
    std::uint64_t mModulesTotal = 0;
    std::vector<PluginLocator> mEnabledBefore;
    std::vector<ScanEntry> mEntries;
};

} // namespace vynaudiofilterhost
