#include "FilterFixture.h"

#include "os/BundleFolder.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vynaudiofilterhost/VST3/src/VST3Bundle.h"

#include <filesystem>
#include <fstream>

namespace {

using namespace vyntest;

Texts exits;

template <int Number>
void NoteExit(FixtureCall const* call) {
    exits.push_back(std::to_string(Number) + ' ' + call->name);
}

class ModuleTest : public testing::Test {
protected:
    ModuleTest() { Initialize(true); }
    ~ModuleTest() override { Terminate(); }

    /// Ends the library, and with it every module, and starts it anew.
    static void UnloadAll() {
        Terminate();
        Initialize(true);
    }

    boost::intrusive_ptr<PluginModule> OpenModule(char const* name) {
        return OpenPluginModule(FixturePath16(name), mReason);
    }

    UString mReason;
};

TEST_F(ModuleTest, ModulesThatCannotBeUsedAreRefusedWithAReasonAndNotKept) {
    for (auto const& [name, reason] :
         {std::pair("initdllfails.vst3", u""), std::pair("moduleentryfails.vst3", u""), std::pair("missing.vst3", u""),
          std::pair("nofactory.vst3", u"the module has no VST3 factory"),
          std::pair("notaplugin.vst3", u"it is no module"),
          std::pair("othermachine.vst3", u"it was made for another kind of machine")}) {
        mReason.clear();
        EXPECT_FALSE(OpenModule(name)) << name;
        EXPECT_FALSE(mReason.empty()) << name;
        EXPECT_TRUE(*reason == u'\0' || mReason == reason) << name;
        EXPECT_EQ(mReason.find(u'\n'), UString::npos) << name;
        EXPECT_FALSE(IsModuleLoaded(FixturePath(name))) << name;
    }
}

TEST_F(ModuleTest, EntryPointsAreOptionalAndInitDllComesFirst) {
    EXPECT_TRUE(OpenModule("noentry.vst3"));
    FixtureModule initDll("initdll.vst3");
    EXPECT_TRUE(OpenModule("initdll.vst3"));
    EXPECT_EQ(initDll.CountCalls("InitDll"), 1);
    EXPECT_EQ(initDll.CountCalls("ModuleEntry"), 0);
    Terminate();
    EXPECT_EQ(initDll.CountCalls("ExitDll"), 1);
    Initialize(true);
    EXPECT_FALSE(IsModuleLoaded(FixturePath("noentry.vst3")));
}

TEST_F(ModuleTest, InfoListsTheAudioClassesAlone) {
    FixtureConfiguration configuration;
    configuration.otherClassCount = 3;
    FixtureModule fixture("configurable.vst3", configuration);
    FixtureModule const two("shell.vst3", configuration);
    std::vector<UString> classIDs;
    auto const single = OpenModule("configurable.vst3");
    auto const info = single->GetPluginInfo(classIDs);
    ASSERT_TRUE(info);
    EXPECT_THAT(classIDs, ElementsAre(fixture.UniqueID(0)));
    EXPECT_FALSE(info->IsShell());
    EXPECT_EQ(info->GetName(), u"configurable");
    EXPECT_EQ(info->GetVendor(), u"Fixture Factory");
    EXPECT_TRUE(OpenModule("shell.vst3")->GetPluginInfo(classIDs)->IsShell());
    EXPECT_THAT(classIDs, ElementsAre(two.UniqueID(0), two.UniqueID(1))) << "in the factory's order";
    EXPECT_FALSE(single->Load()) << "loaded once, by its first owner";
    EXPECT_FALSE(single->CreateAudioFilter(u"3:1 2 3 4"));
    fixture.Configure(configuration.Fail(FixtureFault::NegativeClassCount));
    EXPECT_FALSE(single->GetPluginInfo(classIDs));
    EXPECT_TRUE(classIDs.empty());
}

TEST_F(ModuleTest, FileThatHasGoneGivesNoModuleAndStaysLoaded) {
    TemporaryFolder const folder;
    auto const path = folder.Path() / "copy.vst3";
    std::filesystem::copy_file(FixturePath("configurable.vst3"), path);
    auto const first = vst3::FindOrLoadVST3Module(path.u16string());
    ASSERT_TRUE(first);
    EXPECT_EQ(vst3::FindOrLoadVST3Module(path.u16string()), first);
    std::filesystem::remove(path);
    EXPECT_FALSE(vst3::FindOrLoadVST3Module(path.u16string(), &mReason));
    EXPECT_TRUE(first->GetOSModule());
}

TEST_F(ModuleTest, BundleStandsForItsModuleForThisMachine) {
    TemporaryFolder const folder;
    auto const bundle = folder.Path() / "Effect.vst3";
    std::filesystem::create_directories(bundle);
    EXPECT_EQ(vst3::FindModuleInBundle(bundle.u16string(), mReason), u"");
    auto const binaries = bundle / "Contents" / std::filesystem::path(os::GetBundleFolderName());
    std::filesystem::create_directories(bundle / "Contents" / "sparc64-linux");
    EXPECT_EQ(vst3::FindModuleInBundle(bundle.u16string(), mReason), u"");
    EXPECT_NE(mReason.find(os::GetBundleFolderName()), UString::npos);
    std::filesystem::create_directories(binaries);
    auto const touch = [&](UString const& title) {
        auto const file = binaries / std::filesystem::path(title + os::GetBundleModuleExtension());
        std::ofstream(file) << "module";
        return file.u16string();
    };
    UString const only = touch(u"Other");
    EXPECT_EQ(vst3::FindModuleInBundle(bundle.u16string(), mReason), only);
    UString const usual = touch(u"Effect");
    EXPECT_EQ(vst3::FindModuleInBundle(bundle.u16string() + u"/", mReason), usual);
}

TEST_F(ModuleTest, PathsAreBroughtIntoOnePlainForm) {
    for (auto const& [given, expected] :
         std::initializer_list<std::pair<UString, UString>>{{u"", u""},
                                                            {u"\\\\?\\C:/a//b.vst3", u"C:\\a\\b.vst3"},
                                                            {u"\\\\?\\UNC\\srv\\x.vst3", u"\\\\srv\\x.vst3"},
                                                            {u"\\\\srv\\\\\\x", u"\\\\srv\\x"},
                                                            {u"/usr/lib/a.so", u"\\usr\\lib\\a.so"}}) {
        UString path = given;
        vst3::NormalizeModulePath(path);
        EXPECT_EQ(path, expected);
    }
}

TEST_F(ModuleTest, FailedLoadRunsNoExitPointAndTheNextOneStartsAnew) {
    FixtureModule const fails("initdllfails.vst3");
    for (int attempt = 1; attempt <= 2; ++attempt) {
        EXPECT_FALSE(OpenModule("initdllfails.vst3"));
        EXPECT_EQ(fails.CountCalls("InitDll"), attempt);
    }
    FixtureConfiguration configuration;
    FixtureModule empty("configurable.vst3", configuration.Fail(FixtureFault::NullFactory));
    EXPECT_FALSE(OpenModule("configurable.vst3"));
    EXPECT_FALSE(mReason.empty());
    empty.Configure({});
    EXPECT_TRUE(OpenModule("configurable.vst3"));
    EXPECT_EQ(empty.CountCalls("ModuleEntry"), 1);
    UnloadAll();
    EXPECT_EQ(fails.CountCalls("ExitDll"), 0);
}

TEST_F(ModuleTest, FactoryIsHeldUntilTheLibraryEnds) {
    FixtureModule const fixture("configurable.vst3");
    int const before = fixture->factoryReferences();
    auto const module = vst3::FindOrLoadVST3Module(FixturePath16("configurable.vst3"));
    ASSERT_TRUE(module);
    int const loaded = fixture->factoryReferences();
    EXPECT_GT(loaded, before);
    EXPECT_FALSE(module->Load());
    auto filter = module->CreateVST3Filter(fixture.UniqueID());
    EXPECT_TRUE(filter) << "the refused Load leaves the factory in place";
    EXPECT_GT(fixture->factoryReferences(), loaded);
    filter.reset();
    EXPECT_EQ(fixture->factoryReferences(), loaded);
    UnloadAll();
    EXPECT_LE(fixture->factoryReferences(), before + 1) << "the one that GetPluginFactory itself hands out may stay";
    EXPECT_FALSE(module->CreateVST3Filter(fixture.UniqueID()));
}

TEST_F(ModuleTest, ModulesUnloadInTheOrderOfTheirPathsWhateverTheirExitPointsThrow) {
    exits.clear();
    FixtureModule shell("shell.vst3"), initDll("initdll.vst3"), configurable("configurable.vst3");
    initDll.Configure(FixtureConfiguration().ThrowIn("Module.ExitDll"));
    configurable.Configure(FixtureConfiguration().ThrowIn("Module.ModuleExit"));
    for (char const* const name : {"shell.vst3", "initdll.vst3", "configurable.vst3"})
        ASSERT_TRUE(OpenModule(name));
    configurable->setSink(NoteExit<1>);
    initDll->setSink(NoteExit<2>);
    shell->setSink(NoteExit<3>);
    EXPECT_NO_THROW(UnloadAll());
    EXPECT_THAT(exits, ElementsAre("1 ModuleExit", "2 ExitDll", "3 ModuleExit"));
    for (FixtureModule* const fixture : {&shell, &initDll, &configurable})
        (*fixture)->setSink(nullptr);
}

TEST_F(ModuleTest, AllPathsOfAFileGiveOneModule) {
    auto const absolute = OpenModule("configurable.vst3");
    ASSERT_TRUE(absolute);
    std::filesystem::path const folder = std::filesystem::path(FixturePath("configurable.vst3")).parent_path();
    std::filesystem::path const former = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    EXPECT_EQ(OpenPluginModule(u"./configurable.vst3", mReason), absolute);
    EXPECT_EQ(OpenPluginModule(u"configurable.vst3", mReason), absolute);
    EXPECT_EQ(OpenPluginModule((folder / ".." / folder.filename() / "configurable.vst3").u16string(), mReason),
              absolute);
    std::filesystem::current_path(former);
}

} // namespace
