#include "FilterFixture.h"

#include "os/BundleFolder.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vynaudiofilterhost/VST3/src/VST3Bundle.h"

#include <filesystem>
#include <fstream>

namespace {

using namespace vynaudiofilterhost;
using namespace vynfixtures;
using vyncore::UString;

class ModuleTest : public testing::Test {
protected:
    ModuleTest() { Initialize(true); }
    ~ModuleTest() override { Terminate(); }

    UString mReason;
};

TEST_F(ModuleTest, ModulesThatCannotBeUsedAreRefusedWithAReasonAndNotKept) {
    for (char const* const name : {"initdllfails.vst3", "moduleentryfails.vst3", "nofactory.vst3", "notaplugin.vst3",
                                   "othermachine.vst3", "missing.vst3"}) {
        mReason.clear();
        EXPECT_FALSE(OpenPluginModule(FixturePath16(name), mReason)) << name;
        EXPECT_FALSE(mReason.empty()) << name;
        EXPECT_EQ(mReason.find(u'\n'), UString::npos) << name;
        EXPECT_FALSE(IsModuleLoaded(FixturePath(name))) << name;
    }
}

TEST_F(ModuleTest, ReasonSaysWhatIsWrongWithTheFile) {
    OpenPluginModule(FixturePath16("othermachine.vst3"), mReason);
    EXPECT_EQ(mReason, u"it was made for another kind of machine");
    OpenPluginModule(FixturePath16("notaplugin.vst3"), mReason);
    EXPECT_EQ(mReason, u"it is no module");
    OpenPluginModule(FixturePath16("nofactory.vst3"), mReason);
    EXPECT_EQ(mReason, u"the module has no VST3 factory");
}

TEST_F(ModuleTest, EntryPointsAreOptionalAndInitDllComesFirst) {
    EXPECT_TRUE(OpenPluginModule(FixturePath16("noentry.vst3"), mReason));
    FixtureModule initDll("initdll.vst3");
    EXPECT_TRUE(OpenPluginModule(FixturePath16("initdll.vst3"), mReason));
    EXPECT_EQ(initDll.CountCalls("InitDll"), 1);
    EXPECT_EQ(initDll.CountCalls("ModuleEntry"), 0);
    Terminate();
    EXPECT_EQ(initDll.CountCalls("ExitDll"), 1);
    Initialize(true);
    EXPECT_FALSE(IsModuleLoaded(FixturePath("noentry.vst3")));
}

TEST_F(ModuleTest, InfoListsTheAudioClassesAlone) {
    std::vector<UString> classIDs;
    auto const single = OpenPluginModule(FixturePath16("configurable.vst3"), mReason);
    auto const info = single->GetPluginInfo(classIDs);
    ASSERT_TRUE(info);
    EXPECT_EQ(classIDs.size(), 1u);
    EXPECT_FALSE(info->IsShell());
    EXPECT_EQ(info->GetName(), u"configurable");
    EXPECT_EQ(info->GetVendor(), u"Fixture Factory");
    auto const shell = OpenPluginModule(FixturePath16("shell.vst3"), mReason);
    EXPECT_TRUE(shell->GetPluginInfo(classIDs)->IsShell());
    EXPECT_EQ(classIDs.size(), 2u);
    EXPECT_FALSE(single->Load()) << "loaded once, by its first owner";
    EXPECT_FALSE(single->CreateAudioFilter(u"3:1 2 3 4"));

    FixtureConfiguration configuration;
    FixtureModule const fixture("configurable.vst3", configuration.Fail(FixtureFault::NegativeClassCount));
    EXPECT_FALSE(single->GetPluginInfo(classIDs));
    EXPECT_TRUE(classIDs.empty());
}

TEST_F(ModuleTest, FileThatHasGoneGivesNoModuleAndStaysLoaded) {
    vyntest::TemporaryFolder const folder;
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
    vyntest::TemporaryFolder const folder;
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

} // namespace
