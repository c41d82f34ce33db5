#include "FilterFixture.h"

#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/debug/Trace.h"

#include <filesystem>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using testing::ElementsAre;
using vyncore::UString;

std::vector<std::string> exits;

template <int Number>
void NoteExit(FixtureCall const* call) {
    exits.push_back(std::to_string(Number) + ' ' + call->name);
}

class ModuleLifeTest : public testing::Test {
protected:
    ModuleLifeTest() { Initialize(true); }
    ~ModuleLifeTest() override { Terminate(); }

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

TEST_F(ModuleLifeTest, FailedLoadRunsNoExitPointAndTheNextOneStartsAnew) {
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

TEST_F(ModuleLifeTest, FactoryIsHeldUntilTheLibraryEnds) {
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

TEST_F(ModuleLifeTest, ModulesUnloadInTheOrderOfTheirPathsWhateverTheirExitPointsThrow) {
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

TEST_F(ModuleLifeTest, IDsAreThoseOfTheAudioClassesInTheFactorysOrder) {
    FixtureConfiguration configuration;
    configuration.otherClassCount = 3;
    FixtureModule const single("configurable.vst3", configuration);
    FixtureModule const shell("shell.vst3", configuration);
    std::vector<UString> classIDs;
    EXPECT_FALSE(OpenModule("configurable.vst3")->GetPluginInfo(classIDs)->IsShell());
    EXPECT_THAT(classIDs, ElementsAre(single.UniqueID(0)));
    EXPECT_TRUE(OpenModule("shell.vst3")->GetPluginInfo(classIDs)->IsShell());
    EXPECT_THAT(classIDs, ElementsAre(shell.UniqueID(0), shell.UniqueID(1)));
}

TEST_F(ModuleLifeTest, AllPathsOfAFileGiveOneModule) {
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

TEST_F(ModuleLifeTest, LoadingAndUnloadingAreTraced) {
    std::vector<std::string> traced;
    vyncore::debug::SetTraceLevel(6);
    vyncore::debug::SetTraceSink([&](int level, std::string_view tag, std::string_view text) {
        bool const ofModule = tag.starts_with("VST3PluginModule::") || tag.ends_with("PluginModule");
        if (ofModule && level == 6)
            traced.push_back(std::string(tag) + ": " + std::string(text));
    });
    EXPECT_TRUE(OpenModule("initdll.vst3"));
    EXPECT_TRUE(OpenModule("shell.vst3"));
    EXPECT_FALSE(OpenModule("nofactory.vst3"));
    UnloadAll();
    vyncore::debug::SetTraceSink({});
    vyncore::debug::ResetTraceLevels();
    auto const path = [](char const* name) { return "Path:" + FixturePath(name); };
    EXPECT_THAT(traced,
                ElementsAre("VST3PluginModule::Load: " + path("initdll.vst3"), "InitPluginModule: Calling InitDll",
                            "VST3PluginModule::Load: " + path("shell.vst3"), "InitPluginModule: Calling ModuleEntry",
                            "VST3PluginModule::Load: " + path("nofactory.vst3"),
                            "InitPluginModule: Calling ModuleEntry", "VST3PluginModule::Load: Unloading due to error",
                            "VST3PluginModule::Unload: " + path("initdll.vst3"),
                            "TerminatePluginModule: Calling ExitDll", "VST3PluginModule::Unload: " + path("shell.vst3"),
                            "TerminatePluginModule: Calling ModuleExit"));
}

} // namespace
