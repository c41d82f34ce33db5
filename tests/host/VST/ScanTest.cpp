#include "FilterFixture.h"

#include "host/ScanFixture.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/VST/src/VSTScanContext.h"
#include "vynaudiofilterhost/VST/src/VSTTechnology.h"

#include <filesystem>

namespace {

using namespace vyntest;
using vyncore::filesupport::Dir;

class VSTScanContextTest : public ScanContextFixture<VSTScanContext> {
protected:
    static PluginLocator Locator(char const* name) { return {kTechnologyVST, VSTFixtureModule::Path16(name)}; }

    /// Scans the configurable module. `calls` then has what it saw.
    int Scan(VSTFixtureConfiguration const& configuration, bool shells = true, bool force = false,
             bool internal = false) {
        inventory.ClearAll(true);
        VSTFixtureModule const fixture("configurable.so", configuration);
        int const filters = ScanModule(Locator("configurable.so"), shells, force, internal);
        calls = fixture.Names();
        EXPECT_THAT(fixture.IllFormedCalls(), IsEmpty());
        EXPECT_EQ(fixture->liveEffects(), 0);
        return filters;
    }

    Texts calls;
};

Texts const kInspection{"effGetEffectName", "effGetVendorString", "effGetVstVersion", "effGetPlugCategory"};
Texts const kProbe{"effGetVstVersion", "effSetSpeakerArrangement", "effGetSpeakerArrangement"};

/// What an effect of one parameter sees that is inspected, and that is asked for its descriptor.
Texts Inspected(Texts const& questions) {
    return Joined({{"VSTPluginMain"}, ConstructionCalls(1), questions, {"effClose"}});
}

Texts Described(Texts const& category, Texts const& probes) {
    return Joined({{"VSTPluginMain"},
                   ConstructionCalls(1),
                   {"effGetVstVersion", "effGetVendorString"},
                   category,
                   probes,
                   {"effClose"}});
}

TEST_F(VSTScanContextTest, ModuleSeesAFixedOrderOfCalls) {
    Texts const category{"effGetVstVersion", "effGetPlugCategory"}, probes = Joined({kProbe, kProbe});
    EXPECT_EQ(Scan({}), 1);
    EXPECT_EQ(calls, Joined({Inspected(kInspection), Described(category, probes)}));

    VSTFixtureConfiguration synth;
    synth.category = kPlugCategSynth;
    EXPECT_EQ(Scan(synth), 1);
    EXPECT_EQ(calls, Joined({Inspected(kInspection), Described(category, {})})) << "an instrument is not probed";

    EXPECT_EQ(Scan({}, true, false, true), 1);
    EXPECT_EQ(calls, Joined({Inspected(kInspection), Described({}, probes)}));

    VSTFixtureConfiguration old;
    old.vstVersion = 1;
    EXPECT_EQ(Scan(old), 1);
    EXPECT_EQ(calls, Joined({Inspected({"effGetEffectName", "effGetVendorString", "effGetVstVersion"}),
                             Described({"effGetVstVersion"}, {"effGetVstVersion", "effGetVstVersion"})}));

    EXPECT_EQ(Scan(VSTFixtureConfiguration::Shell()), 3);
    Texts const described = Described(category, probes);
    EXPECT_EQ(calls, Joined({Inspected(Joined({kInspection, Texts(4, "effShellGetNextPlugin")})), described, described,
                             described}));
}

TEST_F(VSTScanContextTest, ModuleTakesAStepForEachEffectAndIsFiledBehindItsLast) {
    VSTFixtureModule const shell("shell.so"), wrongMagic("wrong-magic.so");
    context.StartScan({Locator("shell.so"), Locator("missing.so"), Locator("no-entry.so"), Locator("null-entry.so"),
                       Locator("wrong-magic.so"), Locator("empty-shell.so"), Locator("main-only.so")},
                      true, false, false);
    EXPECT_EQ(Progress(), "shell.so 0") << "not opened yet";
    EXPECT_TRUE(context.Continue());
    EXPECT_EQ(Progress(), "shell.so (2/3) 0");
    EXPECT_EQ(shell->liveEffects(), 0) << "an effect lives no longer than it is looked at";
    EXPECT_TRUE(context.Continue());
    EXPECT_EQ(Progress(), "shell.so (3/3) 0");
    EXPECT_THAT(inventory.GetPluginLocators(), IsEmpty());
    EXPECT_THAT(Catalogue(), IsEmpty());
    EXPECT_TRUE(context.Continue());
    EXPECT_THAT(inventory.GetEnabledPlugins(), ElementsAre(Locator("shell.so")));
    ASSERT_EQ(Catalogue().size(), 3u);
    EXPECT_EQ(Catalogue()[1]->GetUniqueID(), u"2:3000000001 shell");
    for (char const* const next : {"missing.so 1", "no-entry.so 2", "null-entry.so 3", "wrong-magic.so 4",
                                   "empty-shell.so 5", "main-only.so 6"}) {
        EXPECT_EQ(Progress(), next);
        context.Continue();
    }
    EXPECT_EQ(Progress(), "untouched 99 end");
    EXPECT_FALSE(context.Continue());
    wrongMagic.CloseEffect();
    EXPECT_THAT(inventory.GetPluginLocators(),
                testing::UnorderedElementsAre(Locator("shell.so"), Locator("main-only.so")))
        << "modules without an effect leave no trace";
    for (char const* const name : {"main-only.so", "no-entry.so", "null-entry.so", "empty-shell.so"})
        EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path(name))) << name;
}

TEST_F(VSTScanContextTest, ScanThatIsGivenUpFilesNothingOfTheModuleItWasAt) {
    {
        VSTFixtureModule const shell("shell.so");
        VSTScanContext given;
        given.StartScan({Locator("shell.so")}, true, false, false);
        given.Continue();
    }
    EXPECT_THAT(inventory.GetPluginLocators(), IsEmpty());
    EXPECT_THAT(Catalogue(), IsEmpty());
    context.StartScan({Locator("shell.so")}, true, false, false);
    context.Continue();
    context.StartScan({Locator("main-only.so")}, true, false, false);
    EXPECT_EQ(Progress(), "main-only.so 0") << "a new scan begins afresh";
    EXPECT_FALSE(context.Continue());
    EXPECT_THAT(inventory.GetPluginLocators(), ElementsAre(Locator("main-only.so")));
}

TEST_F(VSTScanContextTest, ShellsArePassedOverWhenTheScanIsToldSo) {
    context.StartScan({Locator("shell.so"), Locator("main-only.so")}, false, false, false);
    EXPECT_TRUE(context.Continue());
    EXPECT_EQ(Progress(), "main-only.so 1");
    EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path("shell.so")));
    EXPECT_FALSE(context.Continue());
    EXPECT_THAT(inventory.GetPluginLocators(), ElementsAre(Locator("main-only.so")));
    EXPECT_EQ(Catalogue().size(), 1u);
}

TEST_F(VSTScanContextTest, DescriptorTellsWhatTheEffectAnswers) {
    VSTFixtureConfiguration configuration;
    configuration.category = kPlugCategGenerator;
    configuration.uniqueID = 3000000001;
    ASSERT_EQ(Scan(configuration), 1);
    auto const descriptor = Catalogue().front();
    EXPECT_EQ(descriptor->GetName(), u"configurable");
    EXPECT_EQ(descriptor->GetVendorString(), u"Fixture Works");
    EXPECT_EQ(descriptor->GetVersion(), 2400u);
    EXPECT_EQ(static_cast<int>(descriptor->GetCategory()), 10);
    EXPECT_EQ(descriptor->GetUniqueID(), u"2:3000000001 configurable");
    EXPECT_EQ(descriptor->GetLocator(), Locator("configurable.so"));
    EXPECT_FALSE(descriptor->IsSynth());
    EXPECT_FALSE(descriptor->GetSupportsMono());
    EXPECT_TRUE(descriptor->GetSupportsStereo());
    EXPECT_TRUE(info->HasAnyNonSynthEffect());

    configuration.flags |= effFlagsCanMono;
    ASSERT_EQ(Scan(configuration), 1);
    EXPECT_TRUE(Catalogue().front()->GetSupportsMono());
    configuration.category = kPlugCategSynth;
    ASSERT_EQ(Scan(configuration), 1);
    EXPECT_TRUE(Catalogue().front()->IsSynth());
    EXPECT_FALSE(info->HasAnyNonSynthEffect());
}

TEST_F(VSTScanContextTest, CategoriesOfTheInterfaceAreThoseOfTheCatalogue) {
    int const expected[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 10, 0};
    for (std::int32_t category = 0; category < 13; ++category) {
        if (category == kPlugCategShell)
            continue;
        VSTFixtureConfiguration configuration;
        configuration.category = category;
        ASSERT_EQ(Scan(configuration), 1) << category;
        EXPECT_EQ(static_cast<int>(Catalogue().front()->GetCategory()), expected[category]) << category;
    }
    VSTFixtureConfiguration old;
    old.vstVersion = 1;
    ASSERT_EQ(Scan(old), 1);
    EXPECT_EQ(static_cast<int>(Catalogue().front()->GetCategory()), 0);
}

TEST_F(VSTScanContextTest, FlagsOfTheScanGoBeforeWhatTheEffectSays) {
    VSTFixtureConfiguration synth;
    synth.category = kPlugCategSynth;
    ASSERT_EQ(Scan(synth, true, true, false), 1);
    EXPECT_TRUE(Catalogue().front()->GetSupportsMono());
    EXPECT_TRUE(Catalogue().front()->GetSupportsStereo());
    EXPECT_EQ(static_cast<int>(Catalogue().front()->GetCategory()), 2);
    ASSERT_EQ(Scan(synth, true, false, true), 1);
    EXPECT_EQ(static_cast<int>(Catalogue().front()->GetCategory()), 27);
}

TEST_F(VSTScanContextTest, AsMuchIsFiledOfAModuleAsItLetsBeKnown) {
    EXPECT_EQ(Scan(VSTFixtureConfiguration().ThrowIn(kVSTFixtureEntry)), -1);
    EXPECT_EQ(Scan(VSTFixtureConfiguration().ThrowIn(kVSTFixtureEntry, 2)), -1) << "inspected, but never made";
    EXPECT_EQ(Scan(VSTFixtureConfiguration::Shell().ThrowIn(effShellGetNextPlugin, 3)), -1);
    EXPECT_EQ(Scan(VSTFixtureConfiguration().ThrowIn(effOpen)), 1);
    VSTFixtureConfiguration nulls;
    nulls.nullEntry = true;
    EXPECT_EQ(Scan(nulls), -1);
    nulls = VSTFixtureConfiguration::Shell();
    nulls.shellCount = 0;
    EXPECT_EQ(Scan(nulls), -1) << "a shell with nothing in it";
}

TEST(VSTTechnologyTest, FilesOfAFolderComeBeforeThoseBelowItAndBannedOnesNotAtAll) {
    TemporaryFolder const folder;
    folder.AddFolder("below/deeper");
    folder.AddFolder("Bundle.vst3/Contents");
    for (char const* const name : {"a.so", "B.SO", "c.dll", "d.so.1", "banned.so", "below/e.so", "below/deeper/f.so"})
        folder.AddFile(name);
    PluginLocator const banned(kTechnologyVST, folder.Path16("banned.so"));
    auto& bans = BannedPluginManager::GetInstance();
    bans.AddBannedPlugin(banned);
    auto const found = CollectVSTPlugins(Dir(folder.Path16()));
    bans.RemoveBannedPlugin(banned);
    std::vector<UString> paths;
    for (PluginLocator const& locator : found) {
        EXPECT_EQ(locator.GetTechnologyType(), kTechnologyVST);
        paths.push_back(locator.GetPath().substr(folder.Path16().size() + 1));
    }
    ASSERT_EQ(paths.size(), 4u);
    std::sort(paths.begin(), paths.begin() + 2);
    EXPECT_THAT(paths, ElementsAre(u"B.SO", u"a.so", u"below/e.so", u"below/deeper/f.so"));
    EXPECT_EQ(GetVSTPathDisplayString(u"/a/../b"), u"/a/../b");
}

TEST(VSTTechnologyTest, DefaultFoldersAreThoseChosenTheSystemsAndTheUsersOwn) {
    TemporaryFolder const folder;
    folder.AddFolder("one");
    folder.AddFolder("two");
    UString const one = folder.Path16("one"), two = folder.Path16("two"), own = folder.Path16(".vst");
    ScopedVariable const home("HOME", folder.Path().c_str());
    auto const listed = [](std::string const& path) {
        ScopedVariable const variable("VST_PATH", path.c_str());
        std::vector<UString> directories = GetDefaultVSTDirectories();
        std::erase(directories, u"/usr/lib/vst");
        return directories;
    };
    std::string const base = folder.Path().string() + "/";
    EXPECT_THAT(listed(base + "two:" + base + "missing:" + base + "one"), ElementsAre(two, one, own))
        << "the user's own need not exist";
    EXPECT_THAT(listed(base + "one:" + base + "one"), ElementsAre(one, own));
    EXPECT_THAT(listed(""), ElementsAre(own));
    folder.AddFolder(".vst");
    EXPECT_THAT(listed(base + ".vst"), ElementsAre(own)) << "listed once";
    ScopedVariable const system("VST_PATH", "/usr/lib/vst");
    std::vector<UString> const directories = GetDefaultVSTDirectories();
    EXPECT_LE(std::count(directories.begin(), directories.end(), u"/usr/lib/vst"), 1);
    EXPECT_EQ(directories.back(), own);
}

TEST(VSTTechnologyTest, WhatLiesInTheFormatsFoldersIsFoundScannedAndMade) {
    TemporaryFolder const folder;
    std::filesystem::copy_file(VSTFixtureModule::Path("shell.so"), folder.Path() / "Many.so");
    Initialize(true);
    auto& inventory = PluginModuleInfoManager::GetInstance();
    auto const technology = inventory.GetPluginTechnology(kTechnologyVST);
    ASSERT_TRUE(technology);
    EXPECT_TRUE(technology->UsesDirectories());
    technology->RemoveAllPluginDirectories();
    technology->AddPluginDirectories({folder.Path16()});
    EXPECT_THAT(technology->CollectPlugins(), ElementsAre(PluginLocator(kTechnologyVST, folder.Path16("Many.so"))));
    ScanAll(technology->CollectPlugins());
    EXPECT_FALSE(IsModuleLoaded(folder.Path() / "Many.so"));
    // A module that this run of the library has not inspected isn't known to be a shell.
    Terminate();
    Initialize(true);
    for (char16_t const* const id : {u"2:2222 Many", u"2222 Many"}) {
        auto const filter = utility::CreateAudioFilter(id);
        ASSERT_TRUE(filter);
        EXPECT_EQ(filter->GetID(), u"2:2222 Many");
        EXPECT_EQ(filter->GetDisplayName(), u"Fixture Effect") << "the catalogue's name";
    }
    EXPECT_FALSE(CreateVSTAudioFilter(u"2:4444 Many"));
    auto const original = utility::CreateAudioFilter(u"2:1111 Many");
    original->SetParameter(0, 0.25f);
    auto const clone = AudioFilter::Clone(original);
    ASSERT_TRUE(clone);
    EXPECT_EQ(clone->GetParameter(0), 0.25f);
    clone->SetParameter(0, 0.75f);
    EXPECT_EQ(original->GetParameter(0), 0.25f) << "each has an effect of its own";
    technology->RemoveAllPluginDirectories();
    inventory.ClearAll(true);
    Terminate();
}

} // namespace
