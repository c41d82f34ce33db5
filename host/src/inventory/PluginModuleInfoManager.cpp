#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/KnownModules.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;

PluginModuleInfoManager::PluginModuleInfoManager() : mModules(std::make_unique<KnownModules>()) {}

PluginModuleInfoManager::~PluginModuleInfoManager() = default;

PluginModuleInfoManager& PluginModuleInfoManager::GetInstance() {
    static PluginModuleInfoManager manager;
    return manager;
}

void PluginModuleInfoManager::AddPluginTechnology(TechnologyPointer technology) {
    if (technology)
        mTechnologies.emplace(technology->GetType(), technology);
}

PluginModuleInfoManager::TechnologyPointer PluginModuleInfoManager::GetPluginTechnology(TechnologyType type) const {
    auto const found = mTechnologies.find(type);
    return found != mTechnologies.end() ? found->second : nullptr;
}

std::vector<PluginModuleInfoManager::TechnologyPointer> PluginModuleInfoManager::GetPluginTechnologies() const {
    std::vector<TechnologyPointer> technologies;
    for (auto const& [type, technology] : mTechnologies)
        technologies.push_back(technology);
    return technologies;
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes what belongs to the technologies
void PluginModuleInfoManager::ResetToDefaultFolders() {
    for (TechnologyPointer const& technology : GetPluginTechnologies())
        technology->ResetDirectoriesToDefault();
}

void PluginModuleInfoManager::AddPluginModuleInfo(InfoPointer info) {
    if (!info)
        return;
    mModules->Put(info);
    mPluginInfosChanged();
}

PluginModuleInfoManager::InfoPointer PluginModuleInfoManager::FindPluginInfo(PluginLocator locator) const {
    return mModules->Find(locator);
}

std::vector<PluginLocator> PluginModuleInfoManager::GetPluginLocators() const {
    return mModules->GetLocators(false);
}

std::vector<PluginLocator> PluginModuleInfoManager::GetEnabledPlugins() const {
    return mModules->GetLocators(true);
}

PluginModuleInfoManager::InfoIterator PluginModuleInfoManager::PluginInfoBegin() const {
    return mModules->GetInfos().begin();
}

PluginModuleInfoManager::InfoIterator PluginModuleInfoManager::PluginInfoEnd() const {
    return mModules->GetInfos().end();
}

bool PluginModuleInfoManager::IsPluginEnabled(PluginLocator const& locator, bool unknownIsDisabled) const {
    InfoPointer const info = mModules->Find(locator);
    return info ? info->IsEnabled() : !unknownIsDisabled;
}

void PluginModuleInfoManager::SetPluginEnabled(PluginLocator const& locator, bool enabled) {
    if (InfoPointer const info = mModules->Find(locator))
        info->SetEnabled(enabled);
}

UString PluginModuleInfoManager::GetDisplayStringForLocator(PluginLocator const& locator) const {
    TechnologyPointer const technology = GetPluginTechnology(locator.GetTechnologyType());
    UString const path = locator.GetPath();
    UString const shown = technology ? technology->GetPathDisplayString(path) : UString();
    return shown.empty() ? path : shown;
}

std::vector<PluginLocator>
PluginModuleInfoManager::CollectPotentialPlugins(bool onlyUnknown, std::vector<PluginLocator>& vanished) const {
    std::vector<PluginLocator> candidates;
    for (TechnologyPointer const& technology : GetPluginTechnologies()) {
        std::vector<PluginLocator> found = technology->CollectPlugins();
        if (candidates.empty())
            candidates = std::move(found);
        else
            std::ranges::move(found, std::back_inserter(candidates));
    }
    KnownModules::Differences differences = mModules->CompareWith(candidates, onlyUnknown);
    vanished = std::move(differences.vanished);
    return std::move(onlyUnknown ? differences.unknown : candidates);
}

void PluginModuleInfoManager::RemovePluginLocators(std::vector<PluginLocator> const& locators) {
    auto& descriptors = AudioFilterDescriptorManager::GetInstance();
    bool changed = false;
    for (PluginLocator const& locator : locators) {
        changed |= mModules->Remove(locator);
        changed |= descriptors.ClearInfosForLocator(locator);
    }
    if (changed)
        mPluginInfosChanged();
}

void PluginModuleInfoManager::ClearAll(bool keepPrivateOut) {
    mModules->Clear();
    auto& descriptors = AudioFilterDescriptorManager::GetInstance();
    descriptors.ClearExternalInfos();
    if (!keepPrivateOut)
        descriptors.ReadExternalComponentDescriptors(mPrivateConfiguration, false);
}

} // namespace vynaudiofilterhost
