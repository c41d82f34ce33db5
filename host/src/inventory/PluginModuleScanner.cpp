#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"

#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace vynaudiofilterhost {

namespace {

std::vector<PluginLocator> PickTechnology(std::vector<PluginLocator> const& locators, TechnologyType technology) {
    std::vector<PluginLocator> picked;
    std::copy_if(locators.begin(), locators.end(), std::back_inserter(picked),
                 [technology](PluginLocator const& locator) { return locator.GetTechnologyType() == technology; });
    return picked;
}

int ToInt(std::uint64_t count) {
    return static_cast<int>(std::min<std::uint64_t>(count, std::numeric_limits<int>::max()));
}

} // namespace

PluginModuleScanner::PluginModuleScanner(std::vector<PluginLocator> const& locators, bool flag1, bool flag2, bool flag3)
    : mEnabledBefore(PluginModuleInfoManager::GetInstance().GetEnabledPlugins()) {
    for (auto const& technology : PluginModuleInfoManager::GetInstance().GetPluginTechnologies()) {
        auto const context = technology->CreateScanContext();
        std::vector<PluginLocator> const picked = PickTechnology(locators, technology->GetType());
        if (!context || picked.empty())
            continue;
        context->StartScan(picked, flag1, flag2, flag3);
        mModulesTotal += picked.size();
        mEntries.push_back({technology, context, picked.size()});
    }
}

PluginModuleScanner::~PluginModuleScanner() = default;

void PluginModuleScanner::BeginScan() {
    mCurrentEntry = 0;
}

bool PluginModuleScanner::ContinueScan() {
    while (mCurrentEntry < mEntries.size()) {
        if (mEntries[mCurrentEntry].context->Continue())
            return true;
        mModulesDone += mEntries[mCurrentEntry].moduleCount;
        ++mCurrentEntry;
    }
    return false;
}

void PluginModuleScanner::EndScan() {
    for (PluginLocator const& locator : mEnabledBefore)
        PluginModuleInfoManager::GetInstance().SetPluginEnabled(locator, true);
}

bool PluginModuleScanner::GetCurrentProgressInfo(PluginLocator& locator, vyncore::UString& detail, int& current,
                                                 int& total) const {
    if (mCurrentEntry >= mEntries.size())
        return false;
    unsigned long long index = 0;
    bool const isInside = mEntries[mCurrentEntry].context->GetProgress(locator, detail, index);
    current = ToInt(mModulesDone + index + 1);
    total = ToInt(mModulesTotal);
    return isInside || mCurrentEntry + 1 < mEntries.size();
}

} // namespace vynaudiofilterhost
