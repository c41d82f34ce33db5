#include "os/BundleFolder.h"
#include "support/FixtureModule.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/VST3/src/VST3ScanContext.h"
#include "vyncore/strings/StringUtils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using vyncore::UString;

class ScanContextTest : public testing::Test {
protected:
    ScanContextTest() { Initialize(true); }
    ~ScanContextTest() override {
        inventory.ClearAll(true);
        Terminate();
    }

    static PluginLocator Locator(char const* name) { return {kTechnologyVST3, FixturePath16(name)}; }

    static std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> Catalogue() {
        auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
        return {catalogue.InfoBegin(), catalogue.InfoEnd()};
    }

    /// Scans the module of two classes, configured so; how many filters it has, -1 when it isn't filed.
    int Scan(FixtureConfiguration const& configuration, bool useClassInfo = false) {
        inventory.ClearAll(true);
        FixtureModule const fixture("shell.vst3", configuration);
        context.StartScan({Locator("shell.vst3")}, false, useClassInfo, useClassInfo);
        while (context.Continue()) {
        }
        EXPECT_EQ(useClassInfo ? fixture.CountCalls("createInstance") : fixture->liveObjects(), 0);
        info = inventory.FindPluginInfo(Locator("shell.vst3"));
        return info ? static_cast<int>(Catalogue().size()) : -1;
    }

    std::string Progress() const {
        PluginLocator locator(kTechnologyVST3, u"/untouched");
        UString detail;
        unsigned long long index = 99;
        bool const inside = context.GetProgress(locator, detail, index);
        UString const path = locator.GetPath();
        return vyncore::string::UTF16to8(path.substr(path.rfind(u'/') + 1) + detail) + " " + std::to_string(index) +
               (inside ? "" : " end");
    }

    static inline auto& inventory = PluginModuleInfoManager::GetInstance();
    vst3::VST3ScanContext context;
    boost::intrusive_ptr<PluginModuleInfo> info;
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
    EXPECT_THAT(inventory.GetEnabledPlugins(), testing::ElementsAre(Locator("shell.vst3")));
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
    vyntest::TemporaryFolder const folder;
    vyncore::filesupport::File list(folder.Path16("list"));
    folder.AddFile("list", R"(<pluginlist><plugin filename="SHELL.vst3" uniqueid="none" version="0"/></pluginlist>)");
    EXPECT_TRUE(BannedPluginManager::GetInstance().LoadStaticConfiguration(list));
    EXPECT_EQ(Scan({}), -1);
    folder.AddFile("list", "<pluginlist/>");
    EXPECT_TRUE(BannedPluginManager::GetInstance().LoadStaticConfiguration(list));
    EXPECT_EQ(Scan({}), 2);
}

TEST(VST3TechnologyTest, WhatLiesInTheFormatsFoldersIsFoundScannedAndMade) {
    vyntest::TemporaryFolder const folder;
    vyntest::ScopedVariable const path("VST3_PATH", folder.Path().c_str());
    auto const binaries = folder.Path() / "Two.vst3" / "Contents" / std::filesystem::path(os::GetBundleFolderName());
    std::filesystem::create_directories(binaries);
    std::filesystem::copy_file(vynfixtures::FixturePath("configurable.vst3"), folder.Path() / "One.vst3");
    std::filesystem::copy_file(vynfixtures::FixturePath("single.vst3"), binaries / "Two.so");
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
    EXPECT_THAT(technology->CollectPlugins(), testing::ElementsAre(two)) << "whatever the user's folders are";
    technology->RemoveAllPluginDirectories();
    bans.RemoveBannedPlugin(one);

    std::vector<PluginLocator> vanished;
    auto const found = inventory.CollectPotentialPlugins(true, vanished);
    EXPECT_THAT(found, testing::ElementsAre(one, two));
    boost::intrusive_ptr<PluginModuleScanner> const scanner(new PluginModuleScanner(found, false, false, false));
    scanner->BeginScan();
    while (scanner->ContinueScan()) {
    }
    scanner->EndScan();
    EXPECT_THAT(inventory.CollectPotentialPlugins(true, vanished), testing::IsEmpty());
    EXPECT_THAT(vanished, testing::IsEmpty());
    auto const id = vynfixtures::FixtureModule("single.vst3").UniqueID();
    EXPECT_EQ(utility::CreateAudioFilter(id)->GetNumberOfInputChannels(), 2);
    inventory.ClearAll(true);
    Terminate();
}

} // namespace
