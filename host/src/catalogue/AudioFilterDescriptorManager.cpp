#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"

#include "vyncore/proplist/NumberedKeys.h"
#include "vyncore/proplist/PropList.h"

#include <string>
#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::proplist::PropList;

namespace {

constexpr char const* kCountKey = "num_descriptors";
constexpr char const* kSectionStem = "descriptor";

} // namespace

AudioFilterDescriptorManager::AudioFilterDescriptorManager() = default;

AudioFilterDescriptorManager::~AudioFilterDescriptorManager() = default;

AudioFilterDescriptorManager& AudioFilterDescriptorManager::GetInstance() {
    static AudioFilterDescriptorManager manager;
    return manager;
}

void AudioFilterDescriptorManager::AddAudioFilterDescriptor(InfoPointer descriptor) {
    if (!descriptor)
        return;
    RemoveAudioFilterDescriptor(descriptor);
    DoAddAudioFilterDescriptor(descriptor);
}

void AudioFilterDescriptorManager::RemoveAudioFilterDescriptor(InfoPointer const& descriptor) {
    if (!mInfos.Remove(*descriptor))
        return;
    // The ID goes even when it led to another descriptor, or when another one still bears it.
    mIDMap.Remove(descriptor->GetUniqueID());
    if (mInfos.FindFirst(descriptor->GetUniqueID()))
        mStrayIDs.insert(descriptor->GetUniqueID());
}

void AudioFilterDescriptorManager::DoAddAudioFilterDescriptor(InfoPointer const& descriptor) {
    if (mInfos.Add(descriptor, mSynthsEnabled || !descriptor->IsSynth()))
        mIDMap.Add(descriptor);
}

AudioFilterDescriptorManager::InfoIterator AudioFilterDescriptorManager::InfoBegin() const {
    return mInfos.GetVisible().begin();
}

AudioFilterDescriptorManager::InfoIterator AudioFilterDescriptorManager::InfoEnd() const {
    return mInfos.GetVisible().end();
}

AudioFilterDescriptorManager::InfoPointer
AudioFilterDescriptorManager::GetComponentDescriptorForID(UString const& id) const {
    auto const legacy = mLegacyIDMap.find(id);
    return mIDMap.Find(legacy != mLegacyIDMap.end() ? legacy->second : id);
}

void AudioFilterDescriptorManager::AddLegacyToCurrentIDMapping(UString const& legacyID, UString const& currentID) {
    mLegacyIDMap.emplace(legacyID, currentID);
}

UString AudioFilterDescriptorManager::GetCurrentID(UString const& id) const {
    auto const found = mLegacyIDMap.find(id);
    return found != mLegacyIDMap.end() ? found->second : id;
}

bool AudioFilterDescriptorManager::GetLegacyIDs(UString const& currentID, std::vector<UString>& legacyIDs) const {
    for (auto const& [legacyID, mapped] : mLegacyIDMap) {
        if (mapped == currentID)
            legacyIDs.push_back(legacyID);
    }
    return !legacyIDs.empty();
}

AudioFilterDescriptorManager::Infos AudioFilterDescriptorManager::GetInternalInfos() const {
    return mInfos.GetAll(true);
}

AudioFilterDescriptorManager::Infos AudioFilterDescriptorManager::GetExternalInfos() const {
    return mInfos.GetAll(false);
}

DescriptorMap AudioFilterDescriptorManager::BuildComponentDescriptorMap(Infos const& infos) {
    DescriptorMap map;
    for (InfoPointer const& info : infos)
        map.Add(info);
    return map;
}

void AudioFilterDescriptorManager::ClearExternalInfos() {
    Infos const internal = GetInternalInfos();
    mInfos.Assign(internal);
    mIDMap = BuildComponentDescriptorMap(internal);
    mStrayIDs.clear();
}

bool AudioFilterDescriptorManager::ClearInfosForLocator(PluginLocator const& locator) {
    std::size_t const formerIDs = mIDMap.GetSize();
    // Only what has changed is looked at, for many modules may be cleared one after the other.
    for (InfoPointer const& info : mInfos.RemoveLocator(locator))
        LeadToFirst(info->GetUniqueID());
    for (UString const& id : std::exchange(mStrayIDs, {}))
        LeadToFirst(id);
    return mIDMap.GetSize() != formerIDs;
}

void AudioFilterDescriptorManager::LeadToFirst(UString const& id) {
    if (InfoPointer const first = mInfos.FindFirst(id))
        mIDMap.Set(first);
    else
        mIDMap.Remove(id);
}

void AudioFilterDescriptorManager::ReadExternalComponentDescriptors(PropList const& list, bool merge) {
    if (!merge)
        ClearExternalInfos();
    int count = 0;
    list.GetValue(kCountKey, count);
    for (PropList const* const section : vyncore::proplist::utils::FindNumberedLists(list, kSectionStem, count)) {
        InfoPointer const descriptor(new AudioFilterDescriptor(*section));
        if (!mIDMap.Find(descriptor->GetUniqueID()))
            DoAddAudioFilterDescriptor(descriptor);
    }
}

void AudioFilterDescriptorManager::WriteExternalComponentDescriptors(PropList& list) const {
    Infos const infos = GetExternalInfos();
    list.SetValue(kCountKey, static_cast<int>(infos.size()));
    for (std::size_t index = 0; index < infos.size(); ++index) {
        PropList& section = list.CreateList(kSectionStem + std::to_string(index));
        section.Clear(); // another descriptor may lie there
        infos[index]->Write(section);
    }
}

} // namespace vynaudiofilterhost
