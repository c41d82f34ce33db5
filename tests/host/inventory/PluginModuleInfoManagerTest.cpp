#include "host/inventory/InventoryFixture.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

using namespace vyntest;

/// The modules of an inventory without any index.
struct PlainInventory {
    using Pointer = PluginModuleInfoManager::InfoPointer;

    bool Remove(PluginLocator const& locator) {
        auto const found = map.find(locator);
        if (found == map.end())
            return false;
        std::erase(list, found->second);
        map.erase(found);
        return true;
    }
    void Add(Pointer const& info) {
        Remove(info->GetLocator());
        list.push_back(info);
        map.emplace(info->GetLocator(), info);
    }
    Locators Keys(bool enabledOnly) const {
        Locators keys;
        for (auto const& [locator, info] : map) {
            if (!enabledOnly || info->IsEnabled())
                keys.push_back(locator);
        }
        return keys;
    }
    Locators Vanished(Locators const& found) const {
        Locators vanished = Keys(false);
        std::erase_if(vanished, [&](auto const& locator) { return std::ranges::count(found, locator) != 0; });
        return vanished;
    }

    std::vector<Pointer> list;
    std::map<PluginLocator, Pointer> map;
};

class InventoryManagerTest : public InventoryTest {};

TEST_F(InventoryManagerTest, AnswersAsOneThatWalksItsLists) {
    std::vector<UString> const paths = {u"/m/a.so", u"/m//a.so", u"/m/b.so",   u"/m/./b.so", u"/m/B.so",
                                        u"",        u"/",        u"/m/a.so/c", u"/\u00E4",   u"/\xD800"};
    std::mt19937 random(7);
    PlainInventory plain;
    for (int step = 0; step < 5000; ++step) {
        SCOPED_TRACE(step);
        PluginLocator const locator = At(paths[random() % paths.size()], random() % 3 == 0 ? kSecond : kFirst);
        switch (random() % 4) {
        case 0:
            inventory.SetPluginEnabled(locator, random() % 2 == 0);
            break;
        case 1: {
            bool const known = plain.Remove(locator);
            TakeChanges();
            inventory.RemovePluginLocators({locator, At(u"/nowhere")});
            ASSERT_EQ(TakeChanges(), known ? 1 : 0);
            break;
        }
        default:
            auto const info = MakeInfo(locator);
            inventory.AddPluginModuleInfo(info);
            plain.Add(info);
        }
        disk.resize(random() % 8);
        std::ranges::generate(disk, [&] { return At(paths[random() % paths.size()]); });
        if (random() % 2 == 0)
            continue; // not every change is looked at
        ASSERT_TRUE(
            std::equal(inventory.PluginInfoBegin(), inventory.PluginInfoEnd(), plain.list.begin(), plain.list.end()));
        ASSERT_EQ(inventory.GetPluginLocators(), plain.Keys(false));
        ASSERT_EQ(inventory.GetEnabledPlugins(), plain.Keys(true));
        auto const known = plain.map.find(locator);
        ASSERT_EQ(inventory.FindPluginInfo(locator), known != plain.map.end() ? known->second : nullptr);
        Locators unknown = disk;
        std::erase_if(unknown, [&](auto const& found) { return plain.map.contains(found); });
        Locators vanished = {At(u"/left/over")};
        ASSERT_EQ(inventory.CollectPotentialPlugins(true, vanished), unknown);
        ASSERT_EQ(vanished, plain.Vanished(disk));
        ASSERT_EQ(inventory.CollectPotentialPlugins(false, vanished), disk);
    }
}

TEST_F(InventoryManagerTest, WhatIsKnownOfAModuleIsTheLastThatWasAdded) {
    inventory.AddPluginModuleInfo(MakeInfo(At(u"/a"), u"a"));
    inventory.AddPluginModuleInfo(MakeInfo(At(u"/b"), u"b", false));
    inventory.AddPluginModuleInfo(MakeInfo(At(u"//a"), u"again", false));
    inventory.AddPluginModuleInfo(nullptr);
    EXPECT_EQ(TakeChanges(), 3);
    EXPECT_THAT(NamesInOrder(), ElementsAre(u"b", u"again"));
    EXPECT_FALSE(inventory.IsPluginEnabled(At(u"/a"), false));
    inventory.SetPluginEnabled(At(u"/a"), true);
    inventory.SetPluginEnabled(At(u"/none"), true);
    EXPECT_TRUE(inventory.IsPluginEnabled(At(u"/a"), true));
    EXPECT_TRUE(inventory.IsPluginEnabled(At(u"/none"), false));
    EXPECT_FALSE(inventory.IsPluginEnabled(At(u"/none"), true));
    EXPECT_EQ(TakeChanges(), 0);
}

TEST_F(InventoryManagerTest, TheFirstTechnologyOfATypeStaysAndShowsItsPaths) {
    auto const technology = inventory.GetPluginTechnology(kSecond);
    inventory.AddPluginTechnology(new PluginTechnology(kSecond, {}, {}, {}, {}, false));
    inventory.AddPluginTechnology(nullptr);
    EXPECT_EQ(inventory.GetPluginTechnology(kSecond), technology);
    EXPECT_EQ(inventory.GetPluginTechnology(static_cast<TechnologyType>(51)), nullptr);
    auto const all = inventory.GetPluginTechnologies();
    EXPECT_EQ(all.front()->GetType(), kFirst);
    EXPECT_EQ(all.back(), technology);
    EXPECT_EQ(inventory.GetDisplayStringForLocator(At(u"/a", kSecond)), u"shown /a");
    EXPECT_EQ(inventory.GetDisplayStringForLocator(At(u"/plain", kSecond)), u"/plain");
    EXPECT_EQ(inventory.GetDisplayStringForLocator(At(u"/a", kTechnologyNone)), u"/a");
    inventory.ResetToDefaultFolders();
    EXPECT_THAT(Folders(), ElementsAre(u"/default"));
}

TEST_F(InventoryManagerTest, AModuleThatIsBannedOrOutOfTheFoldersVanishesWithItsFilters) {
    disk = {At(u"/a"), At(u"/b")};
    inventory.GetPluginTechnology(kSecond)->AddPluginDirectories({u"/x"});
    for (PluginLocator const& locator : {At(u"/x/m.so", kSecond), At(u"/b"), At(u"/a")}) {
        inventory.AddPluginModuleInfo(MakeInfo(locator));
        catalogue.AddAudioFilterDescriptor(MakeExternal(locator.ToString()));
    }
    Locators vanished;
    EXPECT_THAT(inventory.CollectPotentialPlugins(true, vanished), ElementsAre());
    EXPECT_THAT(vanished, ElementsAre());
    bans.AddBannedPlugin(At(u"/./a"));
    inventory.GetPluginTechnology(kSecond)->RemoveAllPluginDirectories();
    EXPECT_THAT(inventory.CollectPotentialPlugins(false, vanished), ElementsAre(At(u"/b")));
    EXPECT_THAT(vanished, ElementsAre(At(u"/a"), At(u"/x/m.so", kSecond)));

    TakeChanges();
    inventory.RemovePluginLocators({At(u"/m/a.vst3", kTechnologyVST3)}); // only descriptors tell of it
    EXPECT_TRUE(Visible().empty());
    EXPECT_EQ(TakeChanges(), 1);
    inventory.RemovePluginLocators(vanished);
    EXPECT_EQ(TakeChanges(), 1);
    EXPECT_THAT(inventory.GetPluginLocators(), ElementsAre(At(u"/b")));
    inventory.RemovePluginLocators(vanished);
    EXPECT_EQ(TakeChanges(), 0);
}

} // namespace
