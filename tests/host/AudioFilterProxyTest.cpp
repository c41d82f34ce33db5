#include "vynaudiofilterhost/AudioFilterProxy.h"

#include "fakes/RoutedFilter.h"
#include "host/HostTest.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptorManager.h"
#include "vynaudiofilterhost/catalogue/AudioFilterFactory.h"
#include "vynaudiofilterhost/GenericParameterInfo.h"

#include <tuple>

namespace {

using namespace vyntest;

/// Two parameters, the second without information; it takes whatever buses it is given.
class PluginFilter : public AudioFilter {
public:
    PluginFilter() : AudioFilter(u"3:gone", u"Gone") {}

    int GetParameterCount() const override { return 2; }
    float GetParameter(int index) const override { return values[index]; }
    void SetParameter(int index, float value) override {
        values[index] = value;
        setWithBuses = GetInputBuses().size();
    }
    boost::intrusive_ptr<AudioFilterParameterInfo> GetParameterInfo(int index) override {
        return index == 1 ? nullptr
                          : new GenericParameterInfo(u"Gain", u"dB", kParameterUnitDecibels, 0, -60, 6, true, 0, 1, 1);
    }
    void RequestIOConfiguration(Layouts const& in, Layouts const& out) override {
        ClearBusConfiguration();
        for (auto const& layout : in)
            AddInputBus({u"Bus", layout, {}});
        for (auto const& layout : out)
            AddOutputBus({u"Bus", layout, {}});
    }

    float values[2] = {};
    std::size_t setWithBuses = 0;
};

PropList Stored(AudioFilter const& filter) {
    PropList list;
    PresetData preset(list);
    filter.SaveSettings(preset);
    return list;
}

auto StateOf(AudioFilter const& filter) {
    return std::tuple(filter.GetID(), filter.GetDisplayName(), filter.GetSampleRate(), filter.GetBlockSize(),
                      filter.GetInputBuses(), filter.GetOutputBuses(),
                      filter.GetChannelMap(AudioFilter::kDirectionInput),
                      filter.GetChannelMap(AudioFilter::kDirectionOutput), filter.GetSideChainTargetBus(),
                      filter.GetUseChannelMap(), filter.GetPresetNameAndDirtyState(), Stored(filter));
}

TEST(AudioFilterProxyTest, KeepsWhatMakesUpAFilterAndBringsItBack) {
    boost::intrusive_ptr<PluginFilter> const filter(new PluginFilter);
    filter->SetParameter(1, 0.5f);
    filter->RequestBusConfiguration({Bus(2), Bus(1)}, {Bus(2)});
    filter->SetSampleRate(48000.0f);
    filter->SetBlockSize(256);
    filter->SetSideChainTargetBus(Bus(3));
    filter->SetUseChannelMap(true);
    filter->SetChannelMap(MapOf({1, 0, 2}), AudioFilter::kDirectionInput);
    filter->SetChannelMap(MapOf({0, -1}), AudioFilter::kDirectionOutput);
    filter->SetPresetNameAndDirtyState({u"Warm", true});
    boost::intrusive_ptr<AudioFilterProxy> const proxy(new AudioFilterProxy(filter));
    EXPECT_TRUE(proxy->IsProxy());
    EXPECT_TRUE(StateOf(*proxy) == StateOf(*filter));
    ASSERT_EQ(proxy->GetParameterCount(), 2);
    EXPECT_EQ(proxy->GetParameter(1), 0.5f);
    EXPECT_EQ(proxy->GetParameterInfo(0)->GetUnit(), kParameterUnitDecibels);
    EXPECT_TRUE(proxy->GetParameterInfo(0)->IsExposed() && !proxy->GetParameterInfo(1)->IsExposed());
    EXPECT_EQ(proxy->GetParameterInfo(0)->FromNormalized(0.75f), 0.75f);

    auto& catalogue = AudioFilterDescriptorManager::GetInstance();
    vyncore::utility::Guid const kind(0x70C0FFEE, 1, 2, {3});
    AudioFilterFactory::GetInstance().RegisterFactoryFunction(kind, [](UString const&) { return new PluginFilter; });
    EXPECT_FALSE(proxy->CreateAudioFilterFromZombieState());
    catalogue.AddAudioFilterDescriptor(
        new AudioFilterDescriptor({kTechnologyVST3, u"/gone"}, u"", u"", 1, kCategoryEffect, u"3:gone", kind, false));
    auto const back = proxy->CreateAudioFilterFromZombieState();
    catalogue.ClearExternalInfos();
    ASSERT_TRUE(back && back->IsSuspended() && !back->IsProxy());
    EXPECT_TRUE(StateOf(*back) == StateOf(*proxy));
    EXPECT_EQ(static_cast<PluginFilter&>(*back).setWithBuses, 2u) << "a state may depend on the buses";
}

/// Holds on to the preset that it writes, as a filter may.
class HoldingFilter : public AudioFilter {
public:
    HoldingFilter() : AudioFilter(u"1:holding", u"Holding") {}

    void SaveSettings(PresetData& preset) const override {
        boost::intrusive_ptr<PresetData> const held(&preset);
        held->SetVersion(7.0f);
    }
};

TEST(AudioFilterProxyTest, AFilterMayTakeReferencesOnThePreset) {
    boost::intrusive_ptr<AudioFilterProxy> const proxy(new AudioFilterProxy(new HoldingFilter));
    EXPECT_EQ(Stored(*proxy), Stored(AudioFilterProxy(proxy)));
    PropList list = Stored(*proxy);
    EXPECT_EQ(PresetData(list).GetVersion(), 7.0f);
}

TEST(AudioFilterProxyTest, OfAFilterKnownByNameSettingsAndParametersAreKeptAsTheyAre) {
    AudioFilterProxy proxy(u"2:7 Old", u"Old", 2, true);
    proxy.ConnectPresetChanged([] { FAIL() << "nothing is announced"; });
    PropList list;
    list.CreateList("CustomData").SetValue("what", UString(u"nobody knows"));
    EXPECT_TRUE(proxy.LoadSettings(PresetData(list)));
    EXPECT_EQ(Stored(proxy), list);
    EXPECT_TRUE(proxy.DoPresetsUseChunkData());
    EXPECT_FALSE(proxy.GetParameterInfo(0)->IsExposed());
    for (int const index : {1, 2, 1000000, -1}) {
        proxy.SetParameter(index, 1.0f);
        proxy.SetParameterDisplayName(index, u"Drive");
        EXPECT_EQ(proxy.GetParameter(index), index == 1 ? 1.0f : 0.0f);
        EXPECT_EQ(proxy.GetParameterInfo(index) != nullptr, index == 1);
    }
    EXPECT_EQ(proxy.GetParameterDirtyCount(), 4);
    EXPECT_EQ(proxy.GetParameterInfo(0)->GetName() + proxy.GetParameterInfo(1)->GetName(), u"Drive");
    EXPECT_EQ(AudioFilterProxy(u"", u"", 0xFFFFFFFFu, false).GetParameterCount(), 0);
    EXPECT_FALSE(AudioFilterProxy(nullptr).CreateAudioFilterFromZombieState());
}

} // namespace
