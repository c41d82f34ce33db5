#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"
#include "vyncore/strings/UString.h"

#include <cstddef>
#include <vector>

namespace vynaudiofilterhost {

/// Where a scan stands: at which module of its list, and at which class of that module. A value that the scan context
/// of each format owns; it opens nothing.
class ScanProgress {
public:
    /// Stands before the first module; no classes are known yet.
    /// [main-thread]
    void Start(std::vector<PluginLocator> const& locators);

    /// Whether there is a current module.
    /// [main-thread]
    bool HasModule() const noexcept { return mModuleIndex < mLocators.size(); }

    /// The current module; only while there is one.
    /// [main-thread]
    PluginLocator const& GetModule() const { return mLocators[mModuleIndex]; }

    /// Tells the classes of the current module and stands before the first.
    /// [main-thread]
    void SetClasses(std::vector<vyncore::UString> classIDs);

    /// The ID of the current class; null without classes and behind the last. Holds until the next change.
    /// [main-thread]
    vyncore::UString const* GetClass() const noexcept;

    /// Goes to the next class. Whether there is one.
    /// [main-thread]
    bool NextClass() noexcept;

    /// Goes to the next module, of which no classes are known yet.
    /// [main-thread]
    void NextModule() noexcept;

    /// What PluginScanContext::GetProgress answers; of a module with several classes the text tells which is next, as
    /// in " (3/5)".
    /// [main-thread]
    bool Report(PluginLocator& locator, vyncore::UString& detail, unsigned long long& index) const;

private:
    std::vector<PluginLocator> mLocators;
    std::size_t mModuleIndex = 0;
    std::vector<vyncore::UString> mClassIDs;
    std::size_t mClassIndex = 0;
};

} // namespace vynaudiofilterhost
