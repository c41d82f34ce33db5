#include "FilterFixture.h"

#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/inventory/BannedPluginManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"

#include <climits>

namespace {

using namespace vyntest;

class VSTModuleTest : public VSTFilterTest {
protected:
    /// Inspects the configurable module, configured so; null when it is refused.
    boost::intrusive_ptr<PluginModuleInfo> Inspect(VSTFixtureConfiguration const& configuration) {
        Open(configuration);
        filter.reset();
        fixture->ClearCalls();
        mIDs = {u"former"};
        return module->GetPluginInfo(mIDs);
    }

    std::vector<UString> mIDs;
};

TEST_F(VSTModuleTest, EntryFunctionIsVSTPluginMainOrElseMain) {
    for (auto const& [name, entry] : {std::pair("configurable.so", "VSTPluginMain"),
                                      std::pair("both-names.so", "VSTPluginMain"), std::pair("main-only.so", "main")}) {
        VSTFixtureModule const one(name);
        auto const loaded = FindOrLoadVSTModule(VSTFixtureModule::Path16(name));
        ASSERT_TRUE(loaded) << name;
        EXPECT_THAT(one.Names(), IsEmpty()) << "loading makes no effect";
        ASSERT_TRUE(loaded->CreateAudioFilter(u"2:1 x")) << name;
        EXPECT_EQ(one.Names().front(), entry);
        EXPECT_EQ(one.CountCalls(kVSTFixtureEntry) + one.CountCalls(kVSTFixtureMain), 1);
    }
}

TEST_F(VSTModuleTest, ModulesThatCannotBeUsedAreRefusedWithAReasonAndNotKept) {
    for (char const* const name : {"no-entry.so", "notaplugin.so", "missing.so"}) {
        std::u16string const path = VSTFixtureModule::Path16(name);
        UString reason;
        EXPECT_FALSE(FindOrLoadVSTModule(path, &reason)) << name;
        EXPECT_FALSE(reason.empty()) << name;
        EXPECT_EQ(reason.find(u'\n'), UString::npos) << name;
        EXPECT_FALSE(FindOrLoadVSTModule(path)) << name;
        EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path(name))) << name;
        reason.clear();
        EXPECT_FALSE(OpenPluginModule(path, reason)) << name;
        EXPECT_FALSE(reason.empty()) << name;
    }
}

TEST_F(VSTModuleTest, ModuleIsLoadedOnceAndAgainBehindItsUnloading) {
    std::u16string const path = VSTFixtureModule::Path16("main-only.so");
    auto first = FindOrLoadVSTModule(path);
    ASSERT_TRUE(first);
    EXPECT_EQ(FindOrLoadVSTModule(path), first);
    EXPECT_FALSE(first->Load()) << "loaded already";
    first->Unload();
    EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path("main-only.so")));
    EXPECT_FALSE(first->CreateAudioFilter(u"2:1 x")) << "without a file no effect";
    std::vector<UString> ids;
    EXPECT_FALSE(first->GetPluginInfo(ids));
    first->Unload();
    EXPECT_EQ(FindOrLoadVSTModule(path), first);
    EXPECT_TRUE(first->CreateAudioFilter(u"2:1 x"));
    first.reset();
    Terminate();
    EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path("main-only.so")));
    Initialize(true);
}

TEST_F(VSTModuleTest, ModuleStaysLoadedForAsLongAsAFilterOfItLives) {
    std::u16string const path = VSTFixtureModule::Path16("main-only.so");
    auto made = FindOrLoadVSTModule(path)->CreateAudioFilter(u"2:1 x");
    ASSERT_TRUE(made);
    FindOrLoadVSTModule(path)->Unload();
    EXPECT_TRUE(IsModuleLoaded(VSTFixtureModule::Path("main-only.so")));
    Terminate();
    EXPECT_EQ(made->GetParameter(0), 0.5f) << "its code is there, though the library has stopped";
    made.reset();
    EXPECT_FALSE(IsModuleLoaded(VSTFixtureModule::Path("main-only.so")));
    Initialize(true);
}

TEST_F(VSTModuleTest, ModuleWithoutAnEffectGivesNothingAndOneOfAWrongMagicNoInspection) {
    auto const null = FindOrLoadVSTModule(VSTFixtureModule::Path16("null-entry.so"));
    ASSERT_TRUE(null);
    mIDs = {u"former"};
    EXPECT_FALSE(null->GetPluginInfo(mIDs));
    EXPECT_THAT(mIDs, IsEmpty());
    EXPECT_FALSE(null->CreateAudioFilter(u"2:1 x"));
    auto const wrong = FindOrLoadVSTModule(VSTFixtureModule::Path16("wrong-magic.so"));
    ASSERT_TRUE(wrong);
    VSTFixtureModule const seen("wrong-magic.so");
    mIDs = {u"former"};
    EXPECT_FALSE(wrong->GetPluginInfo(mIDs));
    EXPECT_THAT(mIDs, IsEmpty());
    EXPECT_THAT(seen.Names({vst::effOpen}), IsEmpty()) << "what it isn't is not opened";
    seen.CloseEffect();
    EXPECT_TRUE(wrong->CreateAudioFilter(u"2:1 x"));
}

TEST_F(VSTModuleTest, InfoTellsOfTheEffect) {
    VSTFixtureConfiguration configuration;
    configuration.uniqueID = 3000000001;
    auto info = Inspect(configuration);
    ASSERT_TRUE(info);
    EXPECT_THAT(mIDs, ElementsAre(u"2:3000000001 configurable"));
    EXPECT_EQ(info->GetName(), u"Fixture Effect");
    EXPECT_EQ(info->GetVendor(), u"Fixture Works");
    EXPECT_EQ(info->GetVersion(), 2400u);
    EXPECT_EQ(info->GetType(), kTechnologyVST);
    EXPECT_TRUE(info->IsEnabled());
    EXPECT_FALSE(info->IsShell());
    EXPECT_EQ(info->GetLocator(), PluginLocator(kTechnologyVST, VSTFixtureModule::Path16("configurable.so")));

    configuration.name = "";
    configuration.vendor = VSTFixtureText::Filled(256, false);
    info = Inspect(configuration);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->GetName(), u"configurable") << "a name there must be";
    EXPECT_EQ(info->GetVendor(), UString(256, u'x')) << "an endless text ends with its buffer";
}

TEST_F(VSTModuleTest, FilterIsMadeByTheNumberAloneAndBearsTheIDOfItsFile) {
    for (char16_t const* const id : {u"2:1234567 configurable", u"1234567 configurable", u"2:1234567 other"}) {
        Open({});
        filter = module->CreateAudioFilter(id);
        ASSERT_TRUE(filter);
        EXPECT_EQ(filter->GetID(), u"2:1234567 configurable");
        EXPECT_EQ(filter->GetDisplayName(), u"configurable") << "the title of the file before the effect's own name";
    }
}

TEST_F(VSTModuleTest, ShellIsAskedForItsEffectsInTheirOrder) {
    auto const info = Inspect(VSTFixtureConfiguration::Shell());
    ASSERT_TRUE(info);
    EXPECT_TRUE(info->IsShell());
    EXPECT_THAT(mIDs, ElementsAre(u"2:1111 configurable", u"2:3000000001 configurable", u"2:2222 configurable"));
    EXPECT_EQ(fixture->CountCalls(effShellGetNextPlugin), 4);
    fixture->ClearCalls();
    filter = module->CreateAudioFilter(mIDs[1]);
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->GetID(), mIDs[1]);
    EXPECT_EQ(fixture->Effect()->uniqueID, 3000000001u);
    EXPECT_EQ(filter->GetDisplayName(), u"Fixture Effect") << "the file's title would be the same for all";
    EXPECT_FALSE(module->CreateAudioFilter(u"2:4444 configurable")) << "the shell has none of this number";
}

TEST_F(VSTModuleTest, EffectThatIsMadeIsToldItsNumber) {
    VSTFixtureConfiguration configuration;
    configuration.AddHostCall({.during = kVSTFixtureEntry, .opcode = audioMasterCurrentId, .withoutEffect = true});
    Open(configuration, 3000000001);
    EXPECT_THAT(fixture->Answers(audioMasterCurrentId), ElementsAre(-1294967295)) << "the same 32 bits, extended";
    EXPECT_EQ(fixture->CallHost(audioMasterCurrentId), -1294967295);
    filter.reset();
    module->GetPluginInfo(mIDs);
    EXPECT_THAT(fixture->Answers(audioMasterCurrentId), ElementsAre(-1294967295, 0)) << "none in an inspection";
}

TEST_F(VSTModuleTest, OnlyAnEffectOfVersionTwoCanBeAShellWhichIsNotFollowedForEver) {
    for (std::int32_t const version : {0, 1}) {
        VSTFixtureConfiguration configuration = VSTFixtureConfiguration::Shell();
        configuration.vstVersion = version;
        auto const info = Inspect(configuration);
        ASSERT_TRUE(info);
        EXPECT_FALSE(info->IsShell());
        EXPECT_THAT(mIDs, ElementsAre(u"2:1234567 configurable"));
        EXPECT_EQ(fixture->CountCalls(effShellGetNextPlugin), 0);
    }
    VSTFixtureConfiguration configuration = VSTFixtureConfiguration::Shell();
    configuration.shellCount = 0;
    auto const empty = Inspect(configuration);
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->IsShell());
    EXPECT_THAT(mIDs, IsEmpty());
    configuration.endlessShell = true;
    configuration.logging = false;
    Inspect(configuration);
}

TEST_F(VSTModuleTest, EffectThatIsBannedByItsNumberAndVersionIsRefused) {
    TemporaryFolder const folder;
    vyncore::filesupport::File list(folder.Path16("list"));
    auto& bans = BannedPluginManager::GetInstance();
    for (auto const& [number, refused] : {std::pair("1234567", true), std::pair("1234568", false)}) {
        folder.AddFile("list", std::string(R"(<pluginlist><plugin filename="configurable.so" uniqueid=")") + number +
                                   R"(" version="2400"/></pluginlist>)");
        EXPECT_TRUE(bans.LoadStaticConfiguration(list));
        EXPECT_EQ(Inspect({}) == nullptr, refused) << number;
        EXPECT_EQ(mIDs.empty(), refused);
        EXPECT_EQ((*fixture)->liveEffects(), 0);
    }
    folder.AddFile("list", "<pluginlist/>");
    EXPECT_TRUE(bans.LoadStaticConfiguration(list));
}

TEST_F(VSTModuleTest, EffectWithImpossibleCountsIsRefusedAndClosed) {
    using Count = std::int32_t VSTFixtureConfiguration::*;
    for (Count const count : {&VSTFixtureConfiguration::numInputs, &VSTFixtureConfiguration::numOutputs,
                              &VSTFixtureConfiguration::numParams, &VSTFixtureConfiguration::numPrograms})
        for (std::int32_t const value : {-1, INT_MAX}) {
            VSTFixtureConfiguration configuration;
            configuration.*count = value;
            configuration.ownThread = true; // in code that goes when the module is unloaded
            EXPECT_FALSE(Inspect(configuration));
            EXPECT_THAT(mIDs, IsEmpty());
            EXPECT_FALSE(module->GetRefusalReason().empty());
            EXPECT_FALSE(module->CreateAudioFilter(u"2:1234567 configurable"));
            EXPECT_EQ((*fixture)->liveEffects(), 0);
            EXPECT_EQ(fixture->CountCalls(effOpen), 0);
        }
    EXPECT_TRUE(Inspect({}));
    EXPECT_TRUE(module->GetRefusalReason().empty());
}

TEST_F(VSTModuleTest, WhatTheModuleThrowsWhenItIsAskedWhoItIsGoesToTheCaller) {
    for (std::int32_t const opcode : {effGetVstVersion + 0, effGetPlugCategory + 0, effShellGetNextPlugin + 0}) {
        // The category is asked for once before, where it is caught.
        VSTFixtureConfiguration configuration = VSTFixtureConfiguration::Shell();
        configuration.ThrowIn(opcode, opcode == effGetPlugCategory ? 2 : 1);
        EXPECT_ANY_THROW(Inspect(configuration)) << opcode;
        EXPECT_EQ((*fixture)->liveEffects(), 0) << opcode;
        EXPECT_EQ(fixture->Names().back(), "effClose") << opcode;
    }
    Open({});
    filter.reset();
    fixture->Configure(VSTFixtureConfiguration().ThrowIn(kVSTFixtureEntry));
    EXPECT_ANY_THROW(module->GetPluginInfo(mIDs));
    EXPECT_ANY_THROW(module->CreateAudioFilter(u"2:1234567 configurable"));
    EXPECT_EQ((*fixture)->liveEffects(), 0);
}

TEST_F(VSTModuleTest, EffectThatThrowsIsClosedAllTheSame) {
    for (std::int32_t const opcode :
         {effOpen, effGetPlugCategory, effGetEffectName, effGetVendorString, effGetParamName, effSetSampleRate,
          effSetBlockSize, effClose, effGetParameterProperties, effGetParamLabel}) {
        VSTFixtureConfiguration configuration;
        configuration.ThrowIn(opcode);
        EXPECT_NO_THROW(Open(configuration)) << opcode;
        EXPECT_TRUE(filter) << opcode;
        EXPECT_NO_THROW(filter.reset()) << opcode;
        EXPECT_EQ((*fixture)->liveEffects(), 0) << opcode;
    }
}

} // namespace
