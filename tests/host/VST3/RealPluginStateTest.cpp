#include "host/HostTest.h"
#include "support/SampleBlock.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/inventory/PluginModuleInfo.h"
#include "vynaudiofilterhost/IPresetExchange.h"
#include "vynaudiofilterhost/Library.h"
#include "vynaudiofilterhost/OpenPluginModule.h"
#include "vynaudiofilterhost/presets/PresetData.h"
#include "vyncore/proplist/PropListText.h"
#include "vyncore/strings/StringUtils.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>

namespace {

using namespace vyntest;
using FilterPointer = boost::intrusive_ptr<AudioFilter>;

constexpr int kBlock = 512;
constexpr int kBlocks = 20;

struct RealPlugin {
    char const* name;
    // Deactivated and activated again it goes on from where it was: an instance that has worked sounds unlike a new
    // one.
    bool keepsMemory = false;
    // A switch that the processor turns on by itself when its neighbours go off, without saying so.
    int movesByItself = -1;
};

// One filter of a plug-in at work.
class Rack {
public:
    explicit Rack(PluginModule& module) {
        std::vector<UString> ids;
        module.GetPluginInfo(ids);
        mFilter = module.CreateAudioFilter(ids.at(0));
        mFilter->SetSampleRate(48000.0f);
        mFilter->SetBlockSize(kBlock);
        mIn.emplace(mFilter->GetNumberOfInputChannels(), kBlock);
        mOut.emplace(mFilter->GetNumberOfOutputChannels(), kBlock);
    }
    Rack(Rack const&) = delete;
    Rack& operator=(Rack const&) = delete;
    ~Rack() { mFilter->Suspend(); }

    AudioFilter& Get() const { return *mFilter; }

    // What comes out of noise, or of silence.
    std::vector<float> Render(int blocks, float level) {
        std::minstd_rand noise(7);
        std::vector<float> result;
        for (int block = 0; block < blocks; ++block) {
            for (int channel = 0; channel < mFilter->GetNumberOfInputChannels(); ++channel)
                for (int sample = 0; sample < kBlock; ++sample)
                    mIn->Get()[channel][sample] = level * (static_cast<float>(noise() % 2000) / 1000.0f - 1.0f);
            ChannelFlags outFlags;
            mFilter->ProcessWithMapping(mIn->Get(), mOut->Get(), kBlock, ChannelFlags(), outFlags);
            for (int channel = 0; channel < mFilter->GetNumberOfOutputChannels(); ++channel)
                result.insert(result.end(), mOut->Get()[channel], mOut->Get()[channel] + kBlock);
        }
        return result;
    }

    std::vector<float> Values() const {
        std::vector<float> values;
        for (int index = 0; index < mFilter->GetParameterCount(); ++index)
            values.push_back(mFilter->GetParameter(index));
        return values;
    }

private:
    FilterPointer mFilter;
    std::optional<SampleBlock> mIn, mOut;
};

// A value that a parameter with steps can have.
float OnStep(AudioFilterParameterInfo const& info, float value) {
    auto const steps = static_cast<float>(info.GetStepCount());
    return steps > 0 ? std::round(value * steps) / steps : value;
}

// They are set while the filter runs and reach the processor with a block: these plug-ins take none while suspended.
void SetAll(Rack& rack, std::function<float()> const& next) {
    AudioFilter& filter = rack.Get();
    filter.Resume();
    for (int index = 0; index < filter.GetParameterCount(); ++index) {
        auto const info = filter.GetParameterInfo(index);
        if (info->CanBeAutomated())
            filter.SetParameter(index, OnStep(*info, next()));
    }
    rack.Render(1, 0.0f);
    filter.Suspend();
    filter.EditorAttached(); // a tick
    filter.EditorDetached();
}

void ExpectNear(std::vector<float> const& values, std::vector<float> const& expected, int except) {
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t index = 0; index < values.size(); ++index) {
        if (static_cast<int>(index) != except) {
            EXPECT_NEAR(values[index], expected[index], 1e-6) << "parameter " << index;
        }
    }
}

std::vector<float> RenderAnew(Rack& rack) {
    rack.Get().Resume();
    auto audio = rack.Render(kBlocks, 0.5f);
    rack.Get().Suspend();
    return audio;
}

// The settings as text, and as the file of the plug-in's format, in an instance each.
void ExpectStateTravels(PluginModule& module, std::function<float()> const& next, RealPlugin const& plugin) {
    Rack first(module);
    SetAll(first, next);
    PropList list;
    PresetData preset(list);
    first.Get().SaveSettings(preset);

    Rack second(module);
    PropList read;
    ASSERT_TRUE(vyncore::proplist::utils::ReadPropList(vyncore::proplist::utils::WritePropList(list), read));
    EXPECT_TRUE(second.Get().LoadSettings(PresetData(read)));
    ExpectNear(second.Values(), first.Values(), plugin.movesByItself);

    Rack third(module);
    auto& exchange = dynamic_cast<IPresetExchange&>(third.Get());
    IPresetExchange::Bytes file;
    PropList fromFile;
    PresetData travelled(fromFile);
    UString reason;
    ASSERT_TRUE(exchange.WritePresetFile(preset, u"vstpreset", file, reason));
    ASSERT_TRUE(exchange.ReadPresetFile(file, travelled, reason)) << vyncore::string::UTF16to8(reason);
    EXPECT_TRUE(travelled == preset);
    EXPECT_TRUE(third.Get().LoadSettings(travelled));
    ExpectNear(third.Values(), second.Values(), -1);

    auto const audio = RenderAnew(second);
    EXPECT_TRUE(audio == RenderAnew(third)) << "two new instances of one state differ";
    EXPECT_EQ(audio != RenderAnew(first), plugin.keepsMemory) << "the instance that the state is from";
    EXPECT_EQ(audio != RenderAnew(second), plugin.keepsMemory) << "the same instance once more";
}

class RealPluginStateTest : public testing::TestWithParam<RealPlugin> {
protected:
    RealPluginStateTest() { Initialize(true); }
    ~RealPluginStateTest() override { Terminate(); }
};

TEST_P(RealPluginStateTest, EveryParameterAndTheAudioComeBack) {
    std::string const path = std::string("/usr/lib/vst3/") + GetParam().name + ".vst3";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    UString reason;
    auto const module = OpenPluginModule(vyncore::string::UTF8to16(path), reason);
    ASSERT_TRUE(module) << vyncore::string::UTF16to8(reason);
    std::minstd_rand random(1);
    for (float const value : {0.0f, 1.0f}) {
        SCOPED_TRACE(value);
        ExpectStateTravels(
            *module, [value] { return value; }, GetParam());
    }
    for (int turn = 0; turn < 5; ++turn) {
        SCOPED_TRACE(testing::Message() << "random " << turn);
        ExpectStateTravels(
            *module, [&] { return static_cast<float>(random() % 100000) / 100000.0f; }, GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(ZamPlugins, RealPluginStateTest,
                         testing::Values(RealPlugin{"ZaMaximX2"}, RealPlugin{"ZaMultiComp"},
                                         RealPlugin{"ZaMultiCompX2"}, RealPlugin{"ZamAutoSat"}, RealPlugin{"ZamComp"},
                                         RealPlugin{"ZamCompX2"}, RealPlugin{"ZamDelay"},
                                         RealPlugin{.name = "ZamDynamicEQ", .movesByItself = 9}, RealPlugin{"ZamEQ2"},
                                         RealPlugin{"ZamGEQ31"}, RealPlugin{"ZamGate"}, RealPlugin{"ZamGateX2"},
                                         RealPlugin{"ZamGrains"}, RealPlugin{.name = "ZamHeadX2", .keepsMemory = true},
                                         RealPlugin{"ZamPhono"}, RealPlugin{.name = "ZamTube", .keepsMemory = true},
                                         RealPlugin{"ZamVerb"}),
                         [](auto const& plugin) { return std::string(plugin.param.name); });

} // namespace
