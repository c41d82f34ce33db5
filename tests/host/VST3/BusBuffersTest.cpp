#include "vynaudiofilterhost/VST3/src/VST3BusBuffers.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using vynaudiofilterhost::ChannelFlags;
using vynaudiofilterhost::vst3::VST3BusBuffers;

constexpr std::uint64_t kAll = ~std::uint64_t{0};

class BusBuffersTest : public testing::Test {
protected:
    /// Buses of as many channels each, pointed at one sample per channel.
    void Make(std::vector<int> const& channels) {
        for (int const count : channels)
            mBuffers.AddBus(count, 0, count);
        for (std::size_t channel = 0; channel < mPointers.size(); ++channel)
            mPointers[channel] = mSamples + channel;
        mBuffers.Allocate(16);
        mBuffers.Point(mPointers.data(), 0);
    }

    VST3BusBuffers mBuffers;
    float mSamples[200] = {};
    std::vector<float*> mPointers = std::vector<float*>(200);
};

TEST_F(BusBuffersTest, ChannelsThatShareAFlagAreSilentTogether) {
    Make({60, 6, 100});
    ASSERT_EQ(mBuffers.GetCount(), 3);
    EXPECT_EQ(mBuffers.GetData()[0].channelBuffers32[59], mPointers[59]);
    EXPECT_EQ(mBuffers.GetData()[2].channelBuffers32[99], mPointers[165]);
    mBuffers.SetSilence(ChannelFlags(kAll));
    EXPECT_EQ(mBuffers.GetData()[0].silenceFlags, kAll >> 4);
    EXPECT_EQ(mBuffers.GetData()[2].silenceFlags, kAll);

    mBuffers.Clear();
    Make({60, 6});
    mBuffers.GetData()[0].silenceFlags = kAll;
    mBuffers.GetData()[1].silenceFlags = 0b11'1111;
    EXPECT_EQ(mBuffers.GetSilence().GetBits(), kAll);
    mBuffers.GetData()[1].silenceFlags = 0b10'1111;
    EXPECT_EQ(mBuffers.GetSilence().GetBits(), kAll - 1) << "channel 64 sounds";
}

TEST_F(BusBuffersTest, SilenceStaysWithinItsBus) {
    Make({2, 60, 2});
    mBuffers.SetSilence(ChannelFlags(std::uint64_t{1} << 63 | 0b1101));
    for (std::size_t bus = 0; bus < 3; ++bus)
        EXPECT_EQ(mBuffers.GetData()[bus].silenceFlags, (std::vector<std::uint64_t>{0b01, 0b11, 0b10})[bus]);
    mBuffers.ClearSilence();
    mBuffers.GetData()[0].silenceFlags = kAll;
    EXPECT_EQ(mBuffers.GetSilence().GetBits(), 0b11u);
    mBuffers.ClearSilence();
    mBuffers.GetData()[1].silenceFlags = kAll;
    EXPECT_EQ(mBuffers.GetSilence().GetBits(), kAll >> 4 << 2);
}

} // namespace
