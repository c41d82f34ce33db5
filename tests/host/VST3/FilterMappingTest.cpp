#include "FilterFixture.h"

#include "fakes/RoutedFilter.h"

namespace {

using namespace vyntest;

constexpr std::uint64_t kMono = 0x80000;

class FilterMappingTest : public FilterTest {
protected:
    static FixtureConfiguration MonoPlugin(unsigned latency) {
        FixtureConfiguration configuration;
        configuration.SetBuses({FixtureBus::Make(kMono)}, {FixtureBus::Make(kMono)});
        configuration.delayAudio = true;
        configuration.latency = latency;
        return configuration;
    }

    // Puts the filter on the first of two channels of a track.
    void PutOnStereoTrack() {
        filter->SetUseChannelMap(true);
        filter->SetMainTargetBus(Bus(2));
        filter->SetChannelMap(MapOf({0}), AudioFilter::kDirectionInput);
        filter->SetChannelMap(MapOf({0}), AudioFilter::kDirectionOutput);
    }
};

TEST_F(FilterMappingTest, ChannelAroundAPluginIsInTimeWithIt) {
    for (unsigned const latency : {1u, 64u, 5000u}) {
        Open(MonoPlugin(latency));
        PutOnStereoTrack();
        Resume(512);
        for (int number = 0; number < 12; ++number) {
            SampleBlock in(1, 512), out(2, 512);
            float* both[] = {in.Get()[0], in.Get()[0]};
            ChannelFlags flags;
            filter->ProcessWithMapping(both, out.Get(), 512, ChannelFlags(), flags);
            EXPECT_EQ(out[0], out[1]) << "latency " << latency << " block " << number;
            EXPECT_EQ(out[1].front() == 0.0f && out[1].back() == 0.0f, number < static_cast<int>(latency / 512));
        }
    }
}

TEST_F(FilterMappingTest, SideChainReachesItsBus) {
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(3), FixtureBus::Make(kMono, u"Key", 1)}, {FixtureBus::Make(3)});
    Open(configuration);
    filter->SetUseChannelMap(true);
    filter->SetMainTargetBus(Bus(2));
    filter->SetSideChainTargetBus(Bus(1));
    filter->SetDefaultChannelMap(AudioFilter::kDirectionInput);
    filter->SetDefaultChannelMap(AudioFilter::kDirectionOutput);
    filter->AutoConnectSideChainChannels(true);
    filter->SetBlockSize(64);
    fixture->ClearCalls();
    filter->Resume();
    EXPECT_EQ(fixture->CountCalls("activateBus"), 1);
    SampleBlock in(3, 64), out(2, 64);
    Render(in, out, 64);
    FixtureBlock const& seen = fixture->LastBlock();
    EXPECT_EQ(seen.inputs.buffers[2], in[2].data());
    EXPECT_EQ(seen.inputs.silence[1], 0u);
    Render(in, out, 64, 4);
    EXPECT_EQ(seen.inputs.silence[1], 1u);
}

// What throws in Resume leaves a filter that is suspended, a plug-in that is not active, and a next time.
TEST_F(FilterMappingTest, ResumeThatThrowsIsTakenBack) {
    for (char const* const call : {"Component.setActive", "Component.getLatencySamples"}) {
        SCOPED_TRACE(call);
        FixtureConfiguration configuration = MonoPlugin(2);
        Open(configuration);
        PutOnStereoTrack();
        filter->SetBlockSize(64);
        fixture->Configure(configuration.ThrowIn(call));
        fixture->ClearCalls();
        EXPECT_ANY_THROW(filter->Resume());
        EXPECT_TRUE(filter->IsSuspended());
        EXPECT_EQ(fixture->CallTexts({"setActive"}).back(), "Component.setActive(0)");
        fixture->Configure(MonoPlugin(2));
        filter->Resume();
        SampleBlock in(2, 64), out(2, 64);
        Render(in, out, 64);
        EXPECT_EQ(out[1][2], in[1][0]);
    }
}

} // namespace
