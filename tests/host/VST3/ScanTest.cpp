#include "host/ScanFixture.h"
#include "os/BundleFolder.h"
#include "support/FixtureModule.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/VST3/src/VST3ScanContext.h"

namespace {

using namespace vyntest;
using namespace vynfixtures;

class ScanContextTest : public ScanContextFixture<vst3::VST3ScanContext> {
protected:
    static PluginLocator Locator(char const* name) { return {kTechnologyVST3, FixturePath16(name)}; }

    /// Scans the module of two classes, configured so.
    int Scan(FixtureConfiguration const& configuration, bool useClassInfo = false) {
        inventory.ClearAll(true);
        FixtureModule const fixture("shell.vst3", configuration);
        int const filters = ScanModule(Locator("shell.vst3"), false, useClassInfo, useClassInfo);
        EXPECT_EQ(useClassInfo ? fixture.CountCalls("createInstance") : fixture->liveObjects(), 0);
        return filters;
    }
};

TEST_F(ScanContextTest, AModuleTakesAStepForEachClassAndIsFiledBehindItsLast) {
    FixtureModule const shell("shell.vst3");
    context.StartScan({Locator("shell.vst3"), Locator("missing.vst3"), Locator("notaplugin.vst3")}, 0, 0, 0);
    EXPECT_EQ(Progress(), "shell.vst3 0") << "not opened yet";
    EXPECT_TRUE(context.Continue());
    EXPECT_EQ(Progress(), "shell.vst3 (2/2) 0");
    EXPECT_TRUE(inventory.GetPluginLocators().empty());
    EXPECT_EQ(shell->liveObjects(), 0) << "an instance lives no longer than its class is looked at";
    EXPECT_TRUE(context.Continue());
    EXPECT_THAT(inventory.GetEnabledPlugins(), ElementsAre(Locator("shell.vst3")));
    ASSERT_EQ(Catalogue().size(), 2u);
    EXPECT_EQ(Catalogue()[1]->GetUniqueID(), shell.UniqueID(1));
    EXPECT_EQ(Progress(), "missing.vst3 1");
    EXPECT_TRUE(context.Continue());
    EXPECT_EQ(Progress(), "notaplugin.vst3 2");
    EXPECT_FALSE(context.Continue());
    EXPECT_EQ(Progress(), "untouched 99 end");
    EXPECT_EQ(inventory.GetPluginLocators().size(), 1u) << "modules that can't be opened leave no trace";
}

TEST_F(ScanContextTest, AsMuchIsFiledOfAModuleAsItLetsBeKnown) {
    using Faulty = FixtureConfiguration;
    EXPECT_EQ(Scan(Faulty().Fail(FixtureFault::NegativeClassCount)), -1);
    EXPECT_EQ(Scan(Faulty().ThrowIn("Factory.getFactoryInfo")), -1);
    EXPECT_EQ(Scan(Faulty().Fail(FixtureFault::ClassInfoFails)), 0) << "classes, but none of audio";
    EXPECT_EQ(Scan(Faulty().Fail(FixtureFault::ComponentCreationFails)), 0);
    EXPECT_FALSE(info->HasAnyNonSynthEffect());
    EXPECT_EQ(Scan(Faulty().ThrowIn("Component.initialize", 2)), 1) << "the second class is lost";
    EXPECT_TRUE(info->HasAnyNonSynthEffect());
    EXPECT_EQ(Scan(Faulty().ThrowIn("Factory.getClassInfoUnicode", 2), true), 1);
    Faulty synth;
    SetFixtureText<char>(synth.subCategories, "Instrument|Synth");
    EXPECT_EQ(Scan(synth), 2);
    EXPECT_FALSE(info->HasAnyNonSynthEffect());
    EXPECT_EQ(Scan(synth, true), 2);
    EXPECT_EQ(Catalogue()[0]->GetCategory(), kCategoryInternal);
    EXPECT_TRUE(Catalogue()[0]->GetSupportsMono() && Catalogue()[0]->GetSupportsStereo());
}

TEST_F(ScanContextTest, AModuleThatIsBannedByItsNameIsRefused) {
    TemporaryFolder const folder;
    vyncore::filesupport::File list(folder.Path16("list"));
    folder.AddFile("list", R"(<pluginlist><plugin filename="SHELL.vst3" uniqueid="none" version="0"/></pluginlist>)");
    EXPECT_TRUE(BannedPluginManager::GetInstance().LoadStaticConfiguration(list));
    EXPECT_EQ(Scan({}), -1);
    folder.AddFile("list", "<pluginlist/>");
    EXPECT_TRUE(BannedPluginManager::GetInstance().LoadStaticConfiguration(list));
    EXPECT_EQ(Scan({}), 2);
}

TEST(VST3TechnologyTest, WhatLiesInTheFormatsFoldersIsFoundScannedAndMade) {
    TemporaryFolder const folder;
    ScopedVariable const path("VST3_PATH", folder.Path().c_str());
    auto const binaries = folder.Path() / "Two.vst3" / "Contents" / std::filesystem::path(os::GetBundleFolderName());
    std::filesystem::create_directories(binaries);
    std::filesystem::copy_file(FixturePath("configurable.vst3"), folder.Path() / "One.vst3");
    std::filesystem::copy_file(FixturePath("single.vst3"), binaries / "Two.so");
    PluginLocator const one(kTechnologyVST3, folder.Path16("One.vst3"));
    PluginLocator const two(kTechnologyVST3, (binaries / "Two.so").u16string());

    Initialize(true);
    auto& inventory = PluginModuleInfoManager::GetInstance();
    auto& bans = BannedPluginManager::GetInstance();
    auto const technology = inventory.GetPluginTechnology(kTechnologyVST3);
    technology->AddPluginDirectories({u"/elsewhere"});
    technology->ResetDirectoriesToDefault();
    EXPECT_EQ(technology->DirectoryEnd() - technology->DirectoryBegin(), 1);
    bans.AddBannedPlugin(one);
    EXPECT_THAT(technology->CollectPlugins(), ElementsAre(two)) << "whatever the user's folders are";
    technology->RemoveAllPluginDirectories();
    bans.RemoveBannedPlugin(one);

    std::vector<PluginLocator> vanished;
    auto const found = inventory.CollectPotentialPlugins(true, vanished);
    EXPECT_THAT(found, ElementsAre(one, two));
    ScanAll(found);
    EXPECT_THAT(inventory.CollectPotentialPlugins(true, vanished), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
    auto const id = FixtureModule("single.vst3").UniqueID();
    EXPECT_EQ(utility::CreateAudioFilter(id)->GetNumberOfInputChannels(), 2);
    inventory.ClearAll(true);
    Terminate();
}

} // namespace
