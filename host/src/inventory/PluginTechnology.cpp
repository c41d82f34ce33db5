#include "vynaudiofilterhost/inventory/PluginTechnology.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::filesupport::Dir;

PluginTechnology::PluginTechnology(TechnologyType type, CollectFunction const& collect,
                                   ScanContextFunction const& scanContext,
                                   DefaultDirectoriesFunction const& defaultDirectories,
                                   PathDisplayFunction const& pathDisplay, bool usesDirectories)
    : mType(type),
      mCollect(collect),
      mScanContext(scanContext),
      mDefaultDirectories(defaultDirectories),
      mPathDisplay(pathDisplay),
      mUsesDirectories(usesDirectories) {}

PluginTechnology::~PluginTechnology() = default;

void PluginTechnology::AddPluginDirectories(Directories const& directories) {
    std::set<UString> const present(mDirectories.begin(), mDirectories.end());
    Directories all = mDirectories;
    std::copy_if(directories.begin(), directories.end(), std::back_inserter(all),
                 [&](UString const& directory) { return !present.contains(directory); });
    if (all.size() == mDirectories.size())
        return;
    mDirectories = std::move(all);
    Announce(directories, {});
}

void PluginTechnology::RemovePluginDirectories(Directories const& directories) {
    std::map<UString, std::size_t> toRemove;
    for (UString const& directory : directories)
        ++toRemove[directory];
    Directories rest;
    for (UString const& directory : mDirectories) {
        auto const found = toRemove.find(directory);
        if (found != toRemove.end() && found->second > 0)
            --found->second;
        else
            rest.push_back(directory);
    }
    if (rest.size() == mDirectories.size())
        return;
    mDirectories = std::move(rest);
    Announce({}, directories);
}

void PluginTechnology::RemoveAllPluginDirectories() {
    Directories const removed = std::exchange(mDirectories, {});
    if (!removed.empty())
        Announce({}, removed);
}

void PluginTechnology::ResetDirectoriesToDefault() {
    Announce({}, mDirectories);
    if (!mDefaultDirectories || !mUsesDirectories)
        return;
    mDirectories = mDefaultDirectories();
    Announce(mDirectories, {});
}

std::vector<PluginLocator> PluginTechnology::CollectPlugins() const {
    if (!mCollect)
        return {};
    if (!mUsesDirectories)
        return mCollect(Dir(UString()));
    std::vector<PluginLocator> found;
    for (Dir const& directory : MakeDirs()) {
        std::vector<PluginLocator> const inOne = mCollect(directory);
        found.insert(found.end(), inOne.begin(), inOne.end());
    }
    return found;
}

boost::intrusive_ptr<PluginScanContext> PluginTechnology::CreateScanContext() const {
    return mScanContext(MakeDirs());
}

UString PluginTechnology::GetPathDisplayString(UString const& path) const {
    return mPathDisplay ? mPathDisplay(path) : path;
}

std::vector<Dir> PluginTechnology::MakeDirs() const {
    return {mDirectories.begin(), mDirectories.end()};
}

// By value: a slot may change the folders, or whatever else the lists were taken from. The technology outlives its
// slots.
void PluginTechnology::Announce(Directories added, Directories removed) {
    mDirectoriesChanged(boost::intrusive_ptr<PluginTechnology>(this), added, removed);
}

} // namespace vynaudiofilterhost
