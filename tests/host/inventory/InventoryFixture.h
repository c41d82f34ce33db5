#pragma once

#include "host/catalogue/CatalogueFixture.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"

#include <cstdlib>

namespace vyntest {

using Locators = std::vector<PluginLocator>;

/// The tests' own technologies, beside those of the library.
constexpr auto kFirst = static_cast<TechnologyType>(-5);
constexpr auto kSecond = static_cast<TechnologyType>(50);

inline PluginLocator At(UString const& path, TechnologyType technology = kFirst) {
    return {technology, path};
}

inline boost::intrusive_ptr<PluginModuleInfo> MakeInfo(PluginLocator const& locator, UString const& name = u"Name",
                                                       bool enabled = true) {
    return new PluginModuleInfo(locator, name, u"Vendor", 7, locator.GetTechnologyType(), enabled, false);
}

/// A test on an inventory that knows no module, with two technologies that have no folders: the first finds what is in
/// `disk` and isn't banned, the second uses folders and finds a module "m.so" in each.
class InventoryTest : public CatalogueTest {
protected:
    InventoryTest() {
        setenv("VST3_PATH", "", 1); // the library's own technology finds nothing on this machine
        inventory.AddPluginTechnology(new PluginTechnology(
            kFirst, [](auto const&) { return NotBanned(disk); }, {}, {}, {}, false));
        inventory.AddPluginTechnology(new PluginTechnology(
            kSecond, [](auto const& place) { return Locators{At(place.FullPath() + u"/m.so", kSecond)}; }, {},
            [] { return std::vector<UString>{u"/default"}; },
            [](UString const& path) { return path == u"/plain" ? u"" : u"shown " + path; }, true));
        Empty();
        connection = inventory.GetPluginInfosChangedSignal().connect([this] { ++changes; });
    }
    ~InventoryTest() override { Empty(); }

    static Locators NotBanned(Locators locators) {
        std::erase_if(locators, [](auto const& locator) { return bans.IsPluginBanned(locator); });
        return locators;
    }

    static std::vector<UString> NamesInOrder() {
        std::vector<UString> names;
        for (auto info = inventory.PluginInfoBegin(); info != inventory.PluginInfoEnd(); ++info)
            names.push_back((*info)->GetName());
        return names;
    }

    static std::vector<UString> Folders() {
        auto const technology = inventory.GetPluginTechnology(kSecond);
        return {technology->DirectoryBegin(), technology->DirectoryEnd()};
    }

    /// How often the signal was fired since the last call.
    int TakeChanges() { return std::exchange(changes, 0); }

    File FileNamed(std::string_view name) const { return File(folder.Path16(name)); }

    static inline auto& inventory = PluginModuleInfoManager::GetInstance();
    static inline auto& bans = BannedPluginManager::GetInstance();
    static inline Locators disk;
    TemporaryFolder const folder;

private:
    static void Empty() {
        inventory.SetPrivatePluginConfiguration({});
        inventory.ClearAll(true);
        for (auto const& technology : inventory.GetPluginTechnologies())
            technology->RemoveAllPluginDirectories();
        disk.clear();
        while (bans.BannedBegin() != bans.BannedEnd())
            bans.RemoveBannedPlugin(*bans.BannedBegin());
    }

    int changes = 0;
    boost::signals2::scoped_connection connection;
};

} // namespace vyntest
