#include "vynaudiofilterhost/inventory/BannedPluginManager.h"

#include "vynaudiofilterhost/inventory/LocatorOrder.h"
#include "vynaudiofilterhost/inventory/UnsupportedVSTParseHandler.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/proplist/NumberedKeys.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/proplist/PropListFile.h"
#include "vyncore/strings/StringUtils.h"
#include "vyncore/xml/Parser.h"

#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace vynaudiofilterhost {

using vyncore::UString;
using vyncore::filesupport::File;
using vyncore::proplist::PropList;
using namespace vyncore::proplist::utils;

namespace {

constexpr char const* kTag = "BannedPluginManager";
constexpr unsigned kVersion = 1;
constexpr char const* kCountKey = "num_banned_plugin_files";
constexpr char const* kEntryStem = "banned_plugin_files";

} // namespace

BannedPluginManager::BannedPluginManager() = default;

BannedPluginManager::~BannedPluginManager() = default;

BannedPluginManager& BannedPluginManager::GetInstance() {
    static BannedPluginManager manager;
    return manager;
}

void BannedPluginManager::AddBannedPlugin(PluginLocator const& locator) {
    std::size_t const hash = HashOfModule(locator);
    if (!FindBanned(locator, hash))
        mBannedByFile.Add(hash, &*mBanned.insert(locator).first);
}

void BannedPluginManager::RemoveBannedPlugin(PluginLocator const& locator) {
    PluginLocator const asked = locator; // the reference may lie in the list
    if (mBannedByFile.Remove(HashOfModule(asked), [&](PluginLocator const* banned) { return *banned == asked; }))
        mBanned.erase(asked);
}

bool BannedPluginManager::IsPluginBanned(PluginLocator const& locator) const {
    return !mBanned.empty() && FindBanned(locator, HashOfModule(locator)) != nullptr;
}

PluginLocator const* BannedPluginManager::FindBanned(PluginLocator const& locator, std::size_t hash) const {
    auto const* const found = mBannedByFile.Find(hash, [&](PluginLocator const* banned) { return *banned == locator; });
    return found ? *found : nullptr;
}

void BannedPluginManager::LoadConfiguration(File& file) {
    PropList list;
    unsigned version = 0;
    if (file.Exists() && LoadPropList(file.FullPath(), list, false) && list.GetValue("version", version) &&
        version == kVersion)
        ReadBannedPlugins(list);
}

void BannedPluginManager::ReadBannedPlugins(PropList const& list) {
    int count = 0;
    list.GetValue(kCountKey, count);
    std::vector<UString> const texts = FindNumberedTexts(list, kEntryStem, count);
    std::vector<PluginLocator> locators(texts.size());
    std::vector<PluginLocator const*> inOrder;
    for (std::size_t number = 0; number < texts.size(); ++number) {
        locators[number].FromString(texts[number]);
        inOrder.push_back(&locators[number]);
    }
    SortLocators(inOrder);
    mBanned.clear();
    mBannedByFile.Clear();
    for (PluginLocator const* const locator : inOrder) {
        std::size_t const former = mBanned.size();
        auto const banned = mBanned.insert(mBanned.end(), *locator);
        if (mBanned.size() != former)
            mBannedByFile.Add(HashOfModule(*locator), &*banned);
    }
}

void BannedPluginManager::SaveConfiguration(File& file) const {
    PropList list;
    list.SetValue("version", kVersion);
    WriteBannedPlugins(list);
    if (!SavePropList(file, list))
        throw std::runtime_error(vyncore::string::UTF16to8(file.FullPath()) + " could not be written");
}

void BannedPluginManager::WriteBannedPlugins(PropList& list) const {
    list.SetValue(kCountKey, static_cast<int>(mBanned.size()));
    std::size_t number = 0;
    for (PluginLocator const& locator : mBanned)
        list.SetValue(kEntryStem + std::to_string(number++), locator.ToString());
}

bool BannedPluginManager::LoadStaticConfiguration(File& file) {
    try {
        std::vector<UnsupportedPlugin> plugins;
        UnsupportedVSTParseHandler handler(plugins);
        if (!file.Exists() || vyncore::xml::GetParser(handler).Parse(file.FullPath()) != 0)
            return false;
        mUnsupported = UnsupportedPlugins(plugins);
        return true;
    } catch (std::exception const& error) {
        vyncore::debug::Trace(0, kTag, file.FullPath() + u" was not read: " + vyncore::string::UTF8to16(error.what()));
        return false;
    }
}

bool BannedPluginManager::IsPluginBannedStatically(UString const& fileName, UString const& uniqueID,
                                                   UString const& version) const {
    return mUnsupported.HasMatch({fileName, uniqueID, version});
}

} // namespace vynaudiofilterhost
