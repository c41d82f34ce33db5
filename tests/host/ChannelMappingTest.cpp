#include "fakes/RoutedFilter.h"
#include "host/HostTest.h"
#include "support/NoAllocationScope.h"
#include "vynaudiofilterhost/MainThread.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

using namespace vyntest;
constexpr auto kInput = AudioFilter::kDirectionInput;
constexpr auto kOutput = AudioFilter::kDirectionOutput;
constexpr std::uint64_t kAll = ~std::uint64_t{0};

class ChannelMappingTest : public testing::Test {
protected:
    static constexpr int kSamples = 8;
    static constexpr int kTargets = 6;
    static constexpr float kUntouched = -9.0f;
    using Block = std::array<float, kSamples>;

    void SetUp() override { SetMainThreadToCurrentThread(); }

    void TearDown() override {
        if (mFilter && !mFilter->IsSuspended())
            mFilter->Suspend();
    }

    // A filter on a track, with a map for each side.
    void Make(AudioFilter::Buses const& inputs, AudioFilter::Buses const& outputs, int main, int sideChain = 0) {
        mFilter = new RoutedFilter(inputs, outputs);
        mFilter->SetBlockSize(kSamples);
        mFilter->SetUseChannelMap(true);
        mFilter->SetMainTargetBus(Bus(main));
        mFilter->SetSideChainTargetBus(Bus(sideChain));
    }

    void SetMaps(std::vector<int> const& inputs, std::vector<int> const& outputs) {
        mFilter->SetChannelMap(MapOf(inputs), kInput);
        mFilter->SetChannelMap(MapOf(outputs), kOutput);
    }

    // A running filter of one channel on the first of two; the other goes around it.
    void RunBesideOne(int latency, int input = 0) {
        Make({Bus(1)}, {Bus(1)}, 2);
        SetMaps({input}, {0});
        mFilter->latency = latency;
        mFilter->Resume();
    }

    // Renders a block in which target channel t holds t + 1; gives the flags.
    std::uint64_t Render(std::uint64_t inFlags = 0, int samples = kSamples) {
        std::array<float*, kTargets> in{};
        std::array<float*, kTargets> out{};
        for (std::size_t target = 0; target < kTargets; ++target) {
            mIn[target].fill(static_cast<float>(target + 1));
            mOut[target].fill(kUntouched);
            in[target] = mIn[target].data();
            out[target] = mOut[target].data();
        }
        ChannelFlags outFlags;
        NoAllocationScope const guard;
        mFilter->ProcessWithMapping(in.data(), out.data(), samples, ChannelFlags(inFlags), outFlags);
        return outFlags.GetBits();
    }

    // The first sample of each target channel after Render.
    std::vector<float> Firsts(std::size_t targets) const {
        std::vector<float> firsts;
        for (std::size_t target = 0; target < targets; ++target)
            firsts.push_back(mOut[target].front());
        return firsts;
    }

    boost::intrusive_ptr<RoutedFilter> mFilter;
    std::array<Block, kTargets> mIn{};
    std::array<Block, kTargets> mOut{};
};

TEST_F(ChannelMappingTest, ChannelsGoThroughTheFilterByItsMaps) {
    Make({Bus(2), Bus(2)}, {Bus(3)}, 4, 1);
    SetMaps({3, 0, 4, -1}, {2, -1, 0});
    mFilter->Resume();
    mFilter->outFlags.Set(2);
    EXPECT_EQ(Render(), kAll & ~std::uint64_t{6}) << "what goes around sounds, what is only read does not";
    EXPECT_THAT(mFilter->read, ElementsAre(4.0f, 1.0f, 5.0f, 0.0f));
    EXPECT_EQ(mFilter->inFlags.GetBits(), kAll & ~std::uint64_t{7});
    // Output n of the filter is 10 + n; target 1 goes around, target 3 is read and gets nothing back.
    EXPECT_THAT(Firsts(5), ElementsAre(12.0f, 2.0f, 10.0f, kUntouched, kUntouched));
    Render(1u << 3 | 1u << 1);
    EXPECT_THAT(mFilter->read, ElementsAre(0.0f, 1.0f, 5.0f, 0.0f)) << "a channel declared silent reads silence";
    EXPECT_EQ(mFilter->inFlags.GetBits(), kAll & ~std::uint64_t{6});
}

TEST_F(ChannelMappingTest, ChannelAroundTheFilterIsAsLateAsTheFilter) {
    for (auto const& [latency, delay] : {std::pair(0, 0), std::pair(1, 1), std::pair(20, 20), std::pair(-1, 0),
                                         std::pair((1 << 25) + 1, 0), std::pair(2147483647, 0)}) {
        RunBesideOne(latency);
        mFilter->latency = 3; // from now on; the delay is the one of Resume
        for (int block = 0; block < 5; ++block) {
            EXPECT_EQ(Render(), kAll & ~std::uint64_t{3});
            for (int i = 0; i < kSamples; ++i)
                EXPECT_EQ(mOut[1][static_cast<std::size_t>(i)], block * kSamples + i < delay ? 0.0f : 2.0f);
        }
        EXPECT_EQ(Render(2) & 3, 2u) << "a channel that comes in silent keeps its flag";
        mFilter->Suspend();
    }
}

TEST_F(ChannelMappingTest, NeitherTheBufferOfASilentChannelNorWhatTheFilterWritesInItIsHeardLater) {
    for (bool const spoilsInputs : {false, true}) {
        RunBesideOne(kSamples, spoilsInputs ? -1 : 0);
        mFilter->spoilsInputs = spoilsInputs;
        Render(2); // the buffer holds 2 all the same
        EXPECT_EQ(Render() & 2, 0u);
        EXPECT_THAT(mOut[1], Each(0.0f));
        mFilter->Suspend();
    }
}

TEST_F(ChannelMappingTest, FiltersWithoutASideHandTheBuffersThrough) {
    Make({}, {Bus(1)}, 2);
    SetMaps({}, {1});
    mFilter->Resume();
    EXPECT_EQ(Render(4), kAll & ~std::uint64_t{3});
    EXPECT_EQ(mFilter->inFlags.GetBits(), 4u) << "an instrument sees what the caller gave";
    EXPECT_THAT(Firsts(2), ElementsAre(1.0f, 10.0f));
    Make({Bus(1)}, {}, 2);
    SetMaps({1}, {});
    mFilter->Resume();
    EXPECT_EQ(Render(), kAll);
    EXPECT_THAT(mFilter->read, ElementsAre(2.0f));
    EXPECT_THAT(Firsts(2), ElementsAre(kUntouched, kUntouched));
    // A bus without channels is an output all the same: what the filter does not take goes around.
    Make({Bus(1)}, {Bus(0)}, 2);
    SetMaps({0}, {});
    mFilter->Resume();
    EXPECT_EQ(Render(), kAll & ~std::uint64_t{2});
}

TEST_F(ChannelMappingTest, EntriesBeyondTheTargetAreDropped) {
    Make({Bus(3)}, {Bus(3)}, 2, 1);
    SetMaps({2, 3, 7}, {2, 1, -5});
    mFilter->Resume();
    EXPECT_EQ(Render(), kAll & ~std::uint64_t{3});
    EXPECT_THAT(mFilter->read, ElementsAre(3.0f, 0.0f, 0.0f));
    EXPECT_THAT(Firsts(3), ElementsAre(1.0f, 11.0f, kUntouched));
    // The side chain goes while the filter runs, and with it the buffer behind the main ones.
    mFilter->SetSideChainTargetBus(Bus(0));
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(0.0f, 0.0f, 0.0f));
    mFilter->SetMainTargetBus(Bus(5));
    SetMaps({4, 1, 0}, {4, 0, -1});
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(0.0f, 2.0f, 1.0f)) << "the track's new channels come with Resume";
    mFilter->Suspend();
    mFilter->Resume();
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(5.0f, 2.0f, 1.0f));
    EXPECT_THAT(Firsts(5), ElementsAre(11.0f, kUntouched, 3.0f, 4.0f, 10.0f));
}

TEST_F(ChannelMappingTest, BuffersStayAsTheyWereLaidOutWhileTheTrackChanges) {
    Make({Bus(3)}, {}, 2, 1);
    mFilter->Resume();
    mFilter->SetMainTargetBus(Bus(5));
    SetMaps({0, 2, 5}, {});
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(1.0f, 0.0f, 3.0f)) << "the side chain lies behind two main channels";
    Make({Bus(1)}, {Bus(1)}, 4, 1);
    mFilter->Resume();
    mFilter->SetMainTargetBus(Bus(2));
    SetMaps({2}, {1});
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(5.0f));
    EXPECT_THAT(Firsts(4), ElementsAre(1.0f, 10.0f, kUntouched, kUntouched));
}

TEST_F(ChannelMappingTest, ChannelThatBeginsToGoAroundHasItsPast) {
    Make({Bus(1)}, {Bus(1)}, 2);
    SetMaps({1}, {1});
    mFilter->latency = kSamples;
    mFilter->Resume();
    Render();
    mFilter->RemoveChannelMapping(kInput, 0);
    mFilter->RemoveChannelMapping(kOutput, 0);
    EXPECT_EQ(Render(), kAll & ~std::uint64_t{3}) << "nothing is connected, both go around";
    EXPECT_THAT(mOut[1], Each(2.0f));
}

TEST_F(ChannelMappingTest, ShortBlocksAreOnlyCopiedAsFarAsTheyGo) {
    RunBesideOne(5);
    int position = 0;
    for (int const samples : {3, 8, 0, 1, 7, 8, 2}) {
        Render(0, samples);
        for (int i = 0; i < kSamples; ++i)
            EXPECT_EQ(mOut[1][static_cast<std::size_t>(i)], i >= samples ? kUntouched : position + i < 5 ? 0.0f : 2.0f);
        position += samples;
    }
}

TEST_F(ChannelMappingTest, MoreChannelsThanFlagsSoundWhenOneOfThemDoes) {
    Make({Bus(1)}, {Bus(66)}, 66);
    std::vector<int> outputs(66, -1);
    outputs[1] = 65; // shares the flag of target 1, which goes around and is silent
    outputs[2] = outputs[3] = 64;
    SetMaps({0}, outputs);
    mFilter->Resume();
    std::vector<Block> buffers(66);
    std::vector<float*> pointers;
    for (Block& buffer : buffers)
        pointers.push_back(buffer.data());
    // Of two outputs on one target, and of two channels on one flag, one that sounds is enough.
    for (unsigned const silent : {2u, 3u}) {
        mFilter->outFlags.ClearAll();
        mFilter->outFlags.Set(silent);
        ChannelFlags outFlags;
        mFilter->ProcessWithMapping(pointers.data(), pointers.data(), kSamples, ChannelFlags(3), outFlags);
        EXPECT_EQ(outFlags.GetBits(), 0u) << "targets 2 to 63 go around";
    }
}

TEST_F(ChannelMappingTest, MapsAreInUseFromOneResumeToTheNext) {
    Make({Bus(2)}, {Bus(2)}, 2);
    SetMaps({1, 0}, {1, 0});
    mFilter->SetUseChannelMap(false);
    mFilter->Resume();
    mFilter->SetUseChannelMap(true);
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(1.0f, 2.0f));
    EXPECT_THAT(Firsts(2), ElementsAre(10.0f, 11.0f));
    mFilter->Suspend();
    mFilter->Resume();
    mFilter->SetUseChannelMap(false);
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(2.0f, 1.0f));
    EXPECT_THAT(Firsts(2), ElementsAre(11.0f, 10.0f));
    mFilter->SetChannelMap(MapOf({0}), kInput);
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(1.0f, 0.0f)) << "what it renders by still follows";
    mFilter->SetUseChannelMap(true);
    PropList list;
    mFilter->SaveChannelMapSettings(&list);
    mFilter->SetChannelMap(MapOf({1}), kInput);
    mFilter->LoadChannelMapSettings(&list, false);
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(2.0f, 0.0f)) << "a loaded map comes with Resume";
}

TEST_F(ChannelMappingTest, ChangesAreRenderedAtOnceAndAnnounced) {
    Make({Bus(2)}, {Bus(2)}, 3);
    std::vector<std::pair<std::vector<int>, std::vector<int>>> heard;
    mFilter->ConnectChannelMapChanged(
        [&](AudioFilter::Direction direction, ChannelMap const& before, ChannelMap const& since) {
            EXPECT_EQ(direction, kInput);
            EXPECT_EQ(ValuesOf(mFilter->GetChannelMap(kInput)), ValuesOf(since));
            heard.emplace_back(ValuesOf(before), ValuesOf(since));
        });
    mFilter->SetChannelMap(MapOf({0, 1}), kInput);
    mFilter->Resume();
    mFilter->AssignChannelMapping(kInput, 1, 0);
    Render();
    EXPECT_THAT(mFilter->read, ElementsAre(0.0f, 1.0f)) << "a target has one filter channel at most";
    mFilter->AssignChannelMapping(kInput, -1, 0);
    mFilter->AssignChannelMapping(kInput, 0, 2);
    mFilter->AssignChannelMapping(kInput, 3, 1);
    mFilter->RemoveChannelMapping(kInput, 0);
    mFilter->RemoveChannelMapping(kInput, 9);
    using Values = std::vector<int>;
    EXPECT_THAT(heard, ElementsAre(std::pair(Values{}, Values{0, 1}), std::pair(Values{0, 1}, Values{-1, 0}),
                                   std::pair(Values{-1, 0}, Values{-1, -1}), std::pair(Values{-1, -1}, Values{2, -1}),
                                   std::pair(Values{2, -1}, Values{2, -1, -1, 1}),
                                   std::pair(Values{2, -1, -1, 1}, Values{-1, -1, -1, 1}),
                                   std::pair(Values{-1, -1, -1, 1}, Values{-1, -1, -1, 1})));
    EXPECT_EQ(mFilter->GetEffectChannelIndexForTarget(1, kInput), 3);
    EXPECT_LT(mFilter->GetEffectChannelIndexForTarget(2, kInput), 0);
}

TEST_F(ChannelMappingTest, DefaultMapGoesAsFarAsBothSides) {
    Make({Bus(2), Bus(2)}, {Bus(4)}, 2, 1);
    mFilter->SetDefaultChannelMap(kInput);
    mFilter->SetDefaultChannelMap(kOutput);
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kInput)), ElementsAre(0, 1, 2));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kOutput)), ElementsAre(0, 1));
    EXPECT_FALSE(mFilter->IsChannelMapDefault(kInput));
    mFilter->SetChannelMap(MapOf({0, 1, 2, 3}), kInput);
    EXPECT_TRUE(mFilter->IsChannelMapDefault(kInput));
}

TEST_F(ChannelMappingTest, SideChainIsConnectedBehindTheMainChannels) {
    struct Case {
        AudioFilter::Buses inputs;
        int outputs, main, sideChain;
        bool disconnectFirst;
        std::vector<int> before, since;
    };
    for (Case const& one : {
             Case{{Bus(2), Bus(2)}, 2, 2, 1, true, {0, 1}, {0, 1, 2}},
             Case{{Bus(2), Bus(2)}, 2, 2, 1, true, {0, 1, 2, 3}, {0, 1, 2, -1}},
             Case{{Bus(2), Bus(2)}, 2, 2, 2, false, {0, 1, 3, 2}, {0, 1, 3, 2}},
             Case{{Bus(1), Bus(1)}, 1, 2, 1, true, {0}, {0, 2}},
             // Without two input buses the search starts behind as many channels as come out, or in front.
             Case{{Bus(3)}, 2, 2, 1, true, {0, 1}, {0, 1, 2}},
             Case{{Bus(2)}, 2, 2, 1, true, {1, -1}, {2, -1}},
         }) {
        Make(one.inputs, {Bus(one.outputs)}, one.main, one.sideChain);
        mFilter->SetChannelMap(MapOf(one.before), kInput);
        int announced = 0;
        mFilter->ConnectChannelMapChanged([&](auto&&...) { ++announced; });
        mFilter->AutoConnectSideChainChannels(one.disconnectFirst);
        EXPECT_EQ(ValuesOf(mFilter->GetChannelMap(kInput)), one.since);
        EXPECT_EQ(announced, one.before != one.since);
    }
}

TEST_F(ChannelMappingTest, SmallerSideChainLosesItsConnectionsFirst) {
    Make({Bus(2), Bus(2)}, {Bus(2)}, 2, 2);
    mFilter->SetChannelMap(MapOf({0, 1, 2, 3}), kInput);
    std::vector<std::string> heard;
    mFilter->ConnectChannelMapChanged(
        [&](AudioFilter::Direction direction, ChannelMap const& before, ChannelMap const& since) {
            EXPECT_EQ(direction, kInput);
            EXPECT_THAT(ValuesOf(before), ElementsAre(0, 1, 2, 3));
            EXPECT_THAT(ValuesOf(since), ElementsAre(0, 1, 2, -1));
            EXPECT_EQ(mFilter->GetSideChainTargetBusChannelCount(), 3u) << "the bus itself comes later";
            heard.emplace_back("map");
        });
    mFilter->ConnectTargetFormatChanged([&] { heard.emplace_back("format"); });
    mFilter->SetSideChainTargetBus(Bus(2));
    EXPECT_TRUE(heard.empty());
    mFilter->SetSideChainTargetBus(Bus(3));
    EXPECT_THAT(heard, ElementsAre("format"));
    mFilter->SetSideChainTargetBus(Bus(1));
    EXPECT_THAT(heard, ElementsAre("format", "map", "format"));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kInput)), ElementsAre(0, 1, 2, -1));
}

TEST_F(ChannelMappingTest, SettingsBringTheMapsBack) {
    Make({Bus(2), Bus(2)}, {Bus(2)}, 4);
    SetMaps({3, -1, 0, 2}, {1, 0});
    PropList list;
    EXPECT_TRUE(mFilter->SaveChannelMapSettings(&list));
    SetMaps({0}, {0});
    int announced = 0;
    mFilter->ConnectChannelMapChanged([&](auto&&...) { ++announced; });
    mFilter->SetUseChannelMap(false);
    EXPECT_FALSE(mFilter->LoadChannelMapSettings(&list, true));
    EXPECT_FALSE(mFilter->SaveChannelMapSettings(&list));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kInput)), ElementsAre(0));
    mFilter->SetUseChannelMap(true);
    EXPECT_TRUE(mFilter->LoadChannelMapSettings(&list, true));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kInput)), ElementsAre(3, -1, 0, 2));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kOutput)), ElementsAre(1, 0));
    list.RemoveValue("OutputMapping");
    EXPECT_FALSE(mFilter->LoadChannelMapSettings(&list, false));
    list.FindList("InputMapping")->RemoveValue("D_2");
    EXPECT_FALSE(mFilter->LoadChannelMapSettings(&list, false));
    EXPECT_THAT(ValuesOf(mFilter->GetChannelMap(kInput)), ElementsAre(3)) << "what could be read";
    EXPECT_FALSE(mFilter->LoadChannelMapSettings(nullptr, false));
    EXPECT_EQ(announced, 0);
}

} // namespace
