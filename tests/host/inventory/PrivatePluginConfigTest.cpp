#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"

#include "host/HostTest.h"
#include "os/BundleFolder.h"
#include "support/FixtureModule.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfoManager.h"
#include "vynaudiofilterhost/Library.h"
#include "vyncore/console/CommandRegistry.h"
#include "vyncore/strings/StringUtils.h"

#include <iterator>

namespace {

using namespace vyntest;
using testing::Not;

PluginLocator const kOfTheUser(kTechnologyVST3, u"/user/own.vst3");

/// The folder "R&D" holds a module file and a bundle; the user's settings know one module.
class PrivatePluginConfigTest : public testing::Test {
protected:
    PrivatePluginConfigTest() : mPreferences("XDG_CONFIG_HOME", mFolder.Path().c_str()) {
        Initialize(true);
        inventory.AddPluginModuleInfo(new PluginModuleInfo(kOfTheUser, u"", u"", 0, kTechnologyVST3, true, false));
        vyncore::filesupport::File settings(mFolder.Path16("AudioPluginManagerSettings.xml"));
        inventory.SaveConfiguration(settings, true);
        mFolder.AddFolder("empty");
        mFolder.AddFolder("R&D/Two.vst3/Contents/" + vyncore::string::UTF16to8(os::GetBundleFolderName()));
        std::filesystem::copy_file(vynfixtures::FixturePath("configurable.vst3"), mFolder.Path() / "R&D/One.vst3");
        std::filesystem::copy_file(vynfixtures::FixturePath("single.vst3"), mOwn + mTwo);
    }
    ~PrivatePluginConfigTest() override {
        inventory.SetPrivatePluginConfiguration("");
        inventory.ClearAll(true);
        Terminate();
    }

    UString Run(UString const& arguments) {
        UString output;
        vyncore::console::CommandRegistry::Get().Execute(u"vynaudiofilterhost.BuildPrivatePluginConfig " + arguments,
                                                         output);
        return output;
    }

    std::string ReadResult() const {
        std::ifstream file(mFolder.Path() / "result.xml", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static std::vector<UString> Catalogue() {
        std::vector<UString> paths;
        auto const& catalogue = AudioFilterDescriptorManager::GetInstance();
        for (auto it = catalogue.InfoBegin(); it != catalogue.InfoEnd(); ++it)
            paths.push_back((*it)->GetLocator().GetPath());
        return paths;
    }

    static inline auto& inventory = PluginModuleInfoManager::GetInstance();
    TemporaryFolder const mFolder;
    ScopedVariable const mPreferences;
    UString const mResult = mFolder.Path16("result.xml");
    UString const mOwn = mFolder.Path16("R&D");
    UString const mTwo = u"/Two.vst3/Contents/" + os::GetBundleFolderName() + u"/Two.so";
};

TEST_F(PrivatePluginConfigTest, WhatIsBuiltForOneFolderIsFilledInForAnother) {
    EXPECT_EQ(Run(mResult + u"," + mOwn + u"/"), u"Done.\n");
    EXPECT_THAT(ReadResult(), HasSubstr(">3:@VST3PRIVATEAPPLICATIONPLUGINPATH/One.@VST3PLUGINEXTENSION<"));
    EXPECT_THAT(ReadResult(), Not(HasSubstr("R&amp;D")));
    EXPECT_THAT(ReadResult(), Not(HasSubstr("@PRIVATEAPPLICATIONPLUGINPATH")));
    EXPECT_THAT(inventory.GetPluginLocators(), ElementsAre(kOfTheUser));
    EXPECT_THAT(Catalogue(), ElementsAre(mOwn + u"/One.vst3", mOwn + mTwo));

    utility::SetPrivatePluginConfigFromFile(mResult, u"/opt/<own>", u"");
    EXPECT_EQ(Catalogue().front(), mOwn + u"/One.vst3") << "until somebody asks for it";
    utility::SetPrivatePluginConfig(u"", u"/other", u"");
    utility::SetPrivatePluginConfigFromFile(mFolder.Path16("missing"), u"/other", u"");
    inventory.ClearAll(false);
    EXPECT_THAT(Catalogue(), ElementsAre(u"/opt/<own>/One.vst3", u"/opt/<own>" + mTwo));

    mFolder.AddFile("empty/effect.so", "no module");
    EXPECT_EQ(Run(mResult + u"," + mOwn + u"," + mFolder.Path16("empty")), u"Done.\n");
    EXPECT_THAT(ReadResult(), HasSubstr("/Two.@PLUGINEXTENSION<"));
    utility::SetPrivatePluginConfigFromFile(mResult, u"/opt/own", u"/opt/vst");
    inventory.ClearAll(false);
    EXPECT_EQ(Catalogue().back(), u"/opt/own" + mTwo);
}

TEST_F(PrivatePluginConfigTest, WithoutPluginsOrAFileToWriteTheInventoryComesBack) {
    UString const usage = u"vynaudiofilterhost.BuildPrivatePluginConfig <path of result file>,<VST3 directory>,"
                          u"[VST2 directory]\n";
    inventory.SetPluginEnabled(kOfTheUser, false);
    for (UString const& arguments : {UString(), mResult, mResult + u",a,b,c"})
        EXPECT_EQ(Run(arguments), usage);
    EXPECT_TRUE(inventory.GetEnabledPlugins().empty()) << "nothing was loaded";
    for (UString const& result : {mFolder.Path16("missing/result.xml"), mOwn}) {
        EXPECT_NE(Run(result + u"," + mOwn), u"Done.\n");
        EXPECT_THAT(inventory.GetEnabledPlugins(), ElementsAre(kOfTheUser));
        EXPECT_TRUE(Catalogue().empty());
    }
    EXPECT_EQ(Run(mResult + u"," + mFolder.Path16("empty") + u"," + mFolder.Path16("missing")), u"Done.\n");
    EXPECT_THAT(ReadResult(), HasSubstr("\"num_plugin_infos\">0<"));
    EXPECT_THAT(inventory.GetPluginLocators(), ElementsAre(kOfTheUser));
}

} // namespace
