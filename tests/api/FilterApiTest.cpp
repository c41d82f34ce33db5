#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/AudioFilterProxy.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterLegacyIDMapper.h"
#include "vynaudiofilterhost/catalogue/AudioFilterRegistrar.h"
#include "vynaudiofilterhost/catalogue/CreateAudioFilter.h"
#include "vynaudiofilterhost/catalogue/LegacyFilters.h"
#include "vynaudiofilterhost/catalogue/UsageLogging.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/inventory/PluginModuleScanner.h"
#include "vynaudiofilterhost/inventory/PrivatePluginConfig.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/MainThread.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vyncore/config/UsageLogger.h"
#include "vyncore/proplist/PropList.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace vynaudiofilterhost;
using vyncore::UString;
using vynmediatypes::AudioBusDescription;

class Gain : public AudioFilter {
public:
    Gain() : AudioFilter(u"stranger.gain", u"Gain") {}

    void Process(float** in, float** out, int numSamples, ChannelFlags, ChannelFlags& outFlags) override {
        for (int sample = 0; sample < numSamples; ++sample)
            out[0][sample] = factor * in[0][sample];
        outFlags.ClearAll();
    }

    float factor = 1.0f;

protected:
    void RequestIOConfiguration(Layouts const&, Layouts const&) override {
        ClearBusConfiguration();
        AddInputBus(AudioBusDescription::CreateMono(u"in", AudioBusDescription::kTypeMain));
        AddOutputBus(AudioBusDescription::CreateMono(u"out", AudioBusDescription::kTypeMain));
    }
};

// As it stands beside an internal filter's code.
AudioFilterRegistrar const theRegistrar(
    [] {
        vyncore::utility::Guid const guid(0x11AAAAAA, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10});
        return new AudioFilterDescriptor(u"Gain", 1, kCategoryEffect, u"stranger.gain", guid, false, true, false);
    },
    [](UString const&) { return new Gain; });
AudioFilterLegacyIDMapper const theMapper(u"stranger.volume", u"stranger.gain");

class SetFactor : public Message {
public:
    SetFactor(boost::intrusive_ptr<Gain> gain, bool& done) : mGain(std::move(gain)), mDone(done) {}

    bool ExecuteOnProcessThread() override {
        mGain->factor = 0.5f;
        return false;
    }
    bool ExecuteOnMainThread() override { return mDone = true; }

private:
    boost::intrusive_ptr<Gain> mGain;
    bool& mDone;
};

class StrangersModule : public PluginModule {
public:
    StrangersModule() : PluginModule(u"/no/such/module.so", true) {}
    boost::intrusive_ptr<AudioFilter> CreateAudioFilter(UString const&) override { return new Gain; }
    boost::intrusive_ptr<PluginModuleInfo> GetPluginInfo(std::vector<UString>& ids) override {
        ids = {u"stranger.gain"};
        return new PluginModuleInfo({}, u"name", u"vendor", 1, kTechnologyNone, true, false);
    }
};

class StrangersEditor : public AudioFilterEditor {
public:
    vyncore::geom::RectT<int> GetEditorBounds() override { return {}; }
    void OpenEditor(void*) override {}
    void CloseEditor() override {}
    void EditorIdle() override {}
    bool IsEditorAvailable() override { return true; }
};

class StrangersParameter : public AudioFilterParameterInfo {
public:
    StrangersParameter() : AudioFilterParameterInfo(u"name", u"dB", kParameterUnitDecibels) {}
    float ToNormalized(float displayValue) const override { return displayValue; }
    float FromNormalized(float value) const override { return value; }
    UString GetParameterString(float) const override { return {}; }
};

class StrangersLogger : public vyncore::config::UsageLogger {
public:
    std::shared_ptr<vyncore::config::UsageLoggerGroup>
    OpenGroup(std::string const&, std::string const&, std::string const&, std::string const& argument) override {
        return asked = argument, nullptr;
    }
    std::string asked;
};

class FilterApiTest : public testing::Test {
protected:
    FilterApiTest() { EXPECT_TRUE(Initialize(false)); }
    ~FilterApiTest() override { Terminate(); }
};

TEST_F(FilterApiTest, AStrangersFilterRendersAndHearsMessages) {
    boost::intrusive_ptr<Gain> const gain(new Gain);
    int signals = 0;
    gain->ConnectSuspendedStateChanged([&signals](bool) { ++signals; });
    gain->SetSampleRate(48000.0f);
    gain->SetBlockSize(4);
    gain->RequestBusConfiguration({}, {});
    gain->Resume();
    bool done = false;
    gain->Post(new SetFactor(gain, done));

    float input[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    float output[4] = {};
    float* in[] = {input};
    float* out[] = {output};
    ChannelFlags silent;
    gain->ProcessWithMapping(in, out, 4, ChannelFlags(), silent);
    EXPECT_EQ(output[3], 0.5f);
    EXPECT_FALSE(done);
    gain->Suspend();
    EXPECT_TRUE(done);
    EXPECT_EQ(signals, 2);
}

TEST_F(FilterApiTest, AStrangersFilterIsMadeByItsIDs) {
    for (char16_t const* const id : {u"stranger.gain", u"stranger.volume"}) {
        auto const filter = utility::CreateAudioFilter(id);
        EXPECT_NE(dynamic_cast<Gain*>(filter.get()), nullptr);
        EXPECT_NE(AudioFilter::Clone(filter), nullptr);
    }
    EXPECT_TRUE(CurrentThreadIDIsMainThreadID());
    auto const& manager = AudioFilterDescriptorManager::GetInstance();
    EXPECT_TRUE(std::any_of(manager.InfoBegin(), manager.InfoEnd(), [](auto const& info) {
        return info->GetUniqueID() == u"stranger.gain" && info->IsInternal();
    }));
    EXPECT_TRUE(IsUsingLegacyFilters());
    UseLegacyFilters(false);
    EXPECT_FALSE(IsUsingLegacyFilters());
}

TEST_F(FilterApiTest, AStrangersModuleEditorAndParameterStandInForThoseOfAPlugin) {
    boost::intrusive_ptr<PluginModule> const module(new StrangersModule);
    EXPECT_FALSE(module->Load());
    EXPECT_NE(module->GetLoadError(), u"");
    EXPECT_FALSE(PluginModule::IsSystemLoaderBlocked());
    std::vector<UString> ids;
    auto const info = module->GetPluginInfo(ids);
    vyncore::proplist::PropList list;
    info->Write(list);
    EXPECT_EQ(PluginModuleInfo(list).GetVendor(), u"vendor");
    auto const filter = module->CreateAudioFilter(ids.at(0));
    EXPECT_NE(dynamic_cast<Gain*>(filter.get()), nullptr);
    EXPECT_EQ(filter->GetID(), u"stranger.gain");
    UString reason;
    EXPECT_EQ(OpenPluginModule(u"/no/such/module.vst3", reason), nullptr);
    EXPECT_NE(reason, u"");
    boost::intrusive_ptr<AudioFilterEditor> const editor(new StrangersEditor);
    EXPECT_FALSE(editor->GainFocus(true));
    boost::intrusive_ptr<AudioFilterParameterInfo> const parameter(new StrangersParameter);
    EXPECT_EQ(parameter->GetStepCount(), 0);
}

TEST_F(FilterApiTest, AFilterIsReplacedByAProxyReportedAndScannedFor) {
    boost::intrusive_ptr<AudioFilterProxy> const proxy(new AudioFilterProxy(new Gain));
    EXPECT_NE(dynamic_cast<Gain*>(proxy->CreateAudioFilterFromZombieState().get()), nullptr);
    auto const logger = std::make_shared<StrangersLogger>();
    vyncore::config::UsageLogger::Set(logger);
    LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter>(proxy), "", "argument");
    vyncore::config::UsageLogger::Set(nullptr);
    EXPECT_EQ(logger->asked, "argument");
    boost::intrusive_ptr<PluginModuleScanner> const scanner(new PluginModuleScanner({}, false, false, false));
    EXPECT_FALSE(scanner->ContinueScan());
    utility::SetPrivatePluginConfigFromFile(u"/no/such/file.xml", u"", u"");
}

} // namespace
