#include "host/ScanFixture.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "vynaudiofilterhost/AudioFilterProxy.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vyncore/proplist/PropListText.h"

#include <filesystem>

namespace {

using namespace vyntest;

char const* const kBundle = "/usr/lib/vst3/ZamComp.vst3";

vyncore::UTF8String Stored(AudioFilter const& filter) {
    PropList list;
    PresetData preset(list);
    filter.SaveSettings(preset);
    return vyncore::proplist::utils::WritePropList(list);
}

// Brings inventory and catalogue in step with the folder.
void LookAtDisk() {
    auto& inventory = PluginModuleInfoManager::GetInstance();
    std::vector<PluginLocator> vanished;
    std::vector<PluginLocator> const found = inventory.CollectPotentialPlugins(true, vanished);
    inventory.RemovePluginLocators(vanished);
    ScanAll(found);
}

TEST(RealPluginProxyTest, StateOutlivesTheAbsenceOfTheModuleBitForBit) {
    if (!std::filesystem::exists(kBundle))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    TemporaryFolder const folder;
    ScopedVariable const plugins("VST3_PATH", folder.Path().c_str());
    std::filesystem::path const bundle = folder.Path() / "ZamComp.vst3";
    std::filesystem::copy(kBundle, bundle, std::filesystem::copy_options::recursive);
    Initialize(true);
    LookAtDisk();
    auto const& infos = AudioFilterDescriptorManager::GetInstance();
    ASSERT_NE(infos.InfoBegin(), infos.InfoEnd());
    UString const id = (*infos.InfoBegin())->GetUniqueID();

    auto filter = utility::CreateAudioFilter(id);
    ASSERT_TRUE(filter);
    filter->SetSampleRate(96000.0f);
    filter->SetBlockSize(64);
    for (int index = 0; index < filter->GetParameterCount(); ++index)
        filter->SetParameter(index, 0.3f);
    vyncore::UTF8String const saved = Stored(*filter);
    boost::intrusive_ptr<AudioFilterProxy> const proxy(new AudioFilterProxy(filter));
    filter.reset();

    std::filesystem::rename(bundle, folder.Path() / "elsewhere");
    LookAtDisk();
    EXPECT_FALSE(utility::CreateAudioFilter(id));
    EXPECT_FALSE(proxy->CreateAudioFilterFromZombieState());
    EXPECT_EQ(Stored(*proxy), saved);
    // As a project would: saved with the proxy, loaded into another.
    boost::intrusive_ptr<AudioFilterProxy> const loaded(new AudioFilterProxy(id, u"ZamComp", 0, true));
    PropList list;
    ASSERT_TRUE(vyncore::proplist::utils::ReadPropList(Stored(*proxy), list));
    EXPECT_TRUE(loaded->LoadSettings(PresetData(list)));
    EXPECT_EQ(Stored(*loaded), saved);

    std::filesystem::rename(folder.Path() / "elsewhere", bundle);
    LookAtDisk();
    for (auto const& absent : {proxy, loaded}) {
        auto const back = absent->CreateAudioFilterFromZombieState();
        ASSERT_TRUE(back);
        EXPECT_EQ(Stored(*back), saved);
    }
    PluginModuleInfoManager::GetInstance().ClearAll(true);
    Terminate();
}

} // namespace
