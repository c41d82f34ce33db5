#include "vynaudiofilterhost/DelayLine.h"

#include "support/NoAllocationScope.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {

using vynaudiofilterhost::DelayLine;

/// Channels of 1, 2, 3, … in which channel c is (c + 1) times that, block by block.
class Source {
public:
    explicit Source(unsigned channels) : mBuffers(channels) {}

    float** Next(unsigned samples) {
        mPointers.clear();
        for (std::size_t channel = 0; channel < mBuffers.size(); ++channel) {
            mBuffers[channel].resize(samples);
            for (unsigned i = 0; i < samples; ++i)
                mBuffers[channel][i] = At(channel, mPosition + i);
            mPointers.push_back(mBuffers[channel].data());
        }
        mPosition += samples;
        return mPointers.data();
    }

    static float At(std::size_t channel, long position) {
        return position < 0 ? 0.0f : static_cast<float>(position + 1) * static_cast<float>(channel + 1);
    }

private:
    std::vector<std::vector<float>> mBuffers;
    std::vector<float*> mPointers;
    long mPosition = 0;
};

// Writes blocks of mixed lengths and compares what comes out of every n-th with the source. With `tails` blocks go by
// their tail alone where they can, and others in turn; gives how many did.
int ExpectDelayed(DelayLine& line, unsigned block, unsigned readEvery, bool tails = false) {
    Source source(3);
    long position = 0;
    int byTail = 0;
    unsigned state = block;
    for (unsigned number = 0; number < 400; ++number) {
        state = state * 1664525U + 1013904223U;
        unsigned const length = number % 3 == 0 ? (state >> 8) % (block + 1) : block;
        float** const in = source.Next(length);
        vyntest::NoAllocationScope const guard;
        float** kept = tails && (state >> 24) % 8 != 0 ? line.ExchangeTail(in, length) : nullptr;
        std::size_t const keptSamples = kept ? line.GetDelay() : length;
        byTail += kept != nullptr;
        if (!kept) {
            line.WriteData(in, length);
            kept = number % readEvery == 0 ? line.GetDelayedOutput(length) : nullptr;
        }
        for (std::size_t channel = 0; kept && channel < 3; ++channel)
            for (unsigned i = 0; i < length; ++i)
                EXPECT_EQ(i < keptSamples ? kept[channel][i] : in[channel][i - keptSamples],
                          Source::At(channel, position + i - line.GetDelay()))
                    << "delay " << line.GetDelay() << " block " << block << " position " << position + i;
        position += length;
    }
    return byTail;
}

TEST(DelayLineTest, BlockMayGoByItsTailAlone) {
    for (auto const& [block, delays] : {std::pair(64U, std::vector{0U, 1U, 33U, 64U, 65U}),
                                        std::pair(1024U, std::vector{0U, 100U, 128U, 129U, 1000U, 1024U})}) {
        for (unsigned const delay : delays) {
            DelayLine line(block, delay, 3);
            EXPECT_EQ(ExpectDelayed(line, block, 1, true) > 100, delay <= block) << delay;
        }
    }
}

// On both sides of the border between the two ways to keep samples.
TEST(DelayLineTest, EveryBlockComesOutLateByTheDelay) {
    for (auto const& [block, delays] : {std::pair(64U, std::vector{0U, 1U, 63U, 64U, 65U, 100U, 128U, 192U, 5000U}),
                                        std::pair(1U, std::vector{0U, 1U, 64U, 70U}),
                                        std::pair(2048U, std::vector{0U, 3U, 256U, 257U, 2048U, 9000U})}) {
        for (unsigned const delay : delays) {
            for (unsigned const readEvery : {1U, 3U}) {
                DelayLine line(block, delay, 3);
                EXPECT_EQ(line.GetDelay(), delay);
                ExpectDelayed(line, block, readEvery);
            }
        }
    }
}

TEST(DelayLineTest, ChangedLineWorksLikeANewOne) {
    DelayLine line(64, 10, 3);
    for (unsigned const delay : {500U, 10U, 10U, 501U}) {
        EXPECT_TRUE(line.SetDelay(delay));
        ExpectDelayed(line, 64, 1);
        EXPECT_TRUE(line.SetBufferSize(4096)) << "a block beside which even 500 is short";
        ExpectDelayed(line, 4096, 1);
        line.Reset(true);
        ExpectDelayed(line, 4096, 1);
        EXPECT_TRUE(line.SetBufferSize(64));
    }
}

TEST(DelayLineTest, ResetAndResizingStartAnew) {
    DelayLine line(4, 4, 1);
    Source source(1);
    line.WriteData(source.Next(4), 4);
    EXPECT_TRUE(line.SetBufferSize(4));
    line.WriteData(source.Next(4), 4);
    EXPECT_EQ(line.GetDelayedOutput(4)[0][0], 1.0f) << "the same size keeps what was written";
    line.Reset(false);
    line.WriteData(source.Next(4), 4);
    EXPECT_EQ(line.GetDelayedOutput(4)[0][0], 5.0f) << "the storage stands";
    line.Reset(true);
    line.WriteData(source.Next(4), 4);
    EXPECT_EQ(line.GetDelayedOutput(4)[0][0], 0.0f);
}

TEST(DelayLineTest, WhatCannotBeIsNeitherTakenNorGiven) {
    DelayLine unready;
    unready.WriteData(nullptr, 0);
    EXPECT_EQ(unready.GetDelayedOutput(0), nullptr);

    constexpr unsigned kMost = std::numeric_limits<unsigned>::max();
    DelayLine small(16, 0, 1);
    Source source(1);
    small.WriteData(source.Next(16), 16);
    small.WriteData(source.Next(17), 17);
    EXPECT_EQ(small.GetDelayedOutput(17), nullptr);
    EXPECT_EQ(small.GetDelayedOutput(16)[0][15], 16.0f) << "a block that is too long is dropped";
    for (unsigned const delay : {kMost, kMost - 31, kMost - 64})
        EXPECT_EQ(DelayLine(16, delay, kMost).GetDelayedOutput(1), nullptr);
    EXPECT_FALSE(small.SetDelay(kMost));
    EXPECT_EQ(small.GetDelayedOutput(1), nullptr);
    EXPECT_TRUE(small.SetDelay(3)) << "and recovers";

    DelayLine none(16, 8, 0);
    none.WriteData(nullptr, 16);
    EXPECT_NE(none.GetDelayedOutput(16), nullptr);
}

} // namespace
