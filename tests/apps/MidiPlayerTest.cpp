#include "vynhost/MidiPlayer.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace vynhost;

namespace {

// Notes what it is sent, at which sample of the timeline.
class MidiListener : public vynaudiofilterhost::AudioFilter {
public:
    MidiListener() : AudioFilter(u"test", u"Test") {}

    void ScheduleMIDIEvent(bool live, unsigned int sampleOffset, unsigned char status, unsigned char data1,
                           unsigned char data2) override {
        EXPECT_FALSE(live);
        sent.emplace_back(position + sampleOffset, status, data1 + 256 * data2);
        offsets.push_back(sampleOffset);
    }
    void Process(float**, float**, int, vynaudiofilterhost::ChannelFlags, vynaudiofilterhost::ChannelFlags&) override {}

    std::int64_t position = 0;
    std::vector<std::tuple<std::int64_t, int, int>> sent; ///< sample, status, data
    std::vector<unsigned> offsets;
};

// The lengths of the blocks up to the end.
std::vector<int> Play(MidiListener& listener, MidiSong const& song, std::int64_t end, int blockSize) {
    MidiPlayer player(&song, 1000.0);
    std::vector<int> blocks;
    while (listener.position < end) {
        std::size_t const before = listener.sent.size();
        blocks.push_back(player.Advance(listener, listener.position, blockSize));
        EXPECT_EQ(player.HasSent(), listener.sent.size() > before);
        EXPECT_TRUE(blocks.back() > 0 && blocks.back() <= blockSize) << blocks.back();
        for (std::size_t i = before; i < listener.sent.size(); ++i)
            EXPECT_LT(listener.offsets[i], static_cast<unsigned>(blocks.back()));
        EXPECT_LE(listener.sent.size() - before, std::size_t{MidiPlayer::kMostMessages});
        listener.position += blocks.back();
    }
    return blocks;
}

TEST(MidiPlayerTest, MessagesComeInOrderAtTheirNearestSampleWhateverTheBlockSize) {
    MidiSong const song{.messages = {{0.0, 0x90, 1, 2},
                                     {0.0, 0xB0, 7, 100},
                                     {0.0104, 0x80, 1, 2},
                                     {0.0106, 0xC0, 3, 0},
                                     {0.0499999, 0xE0, 0, 64},
                                     {0.06, 0x90, 5, 6}}};
    for (int const blockSize : {1, 7, 50, 1024}) {
        boost::intrusive_ptr<MidiListener> const listener(new MidiListener);
        Play(*listener, song, 100, blockSize);
        EXPECT_EQ(listener->sent, (std::vector<std::tuple<std::int64_t, int, int>>{{0, 0x90, 513},
                                                                                   {0, 0xB0, 7 + 25600},
                                                                                   {10, 0x80, 513},
                                                                                   {11, 0xC0, 3},
                                                                                   {50, 0xE0, 64 * 256},
                                                                                   {60, 0x90, 5 + 6 * 256}}))
            << blockSize;
    }
}

TEST(MidiPlayerTest, WhatMayBecomeAParameterBeginsItsBlock) {
    for (int const status : {0xB0, 0xD3, 0xEF}) {
        boost::intrusive_ptr<MidiListener> const listener(new MidiListener);
        auto const byte = static_cast<std::uint8_t>(status);
        MidiSong const song{
            .messages = {{0.005, 0x90, 1, 1}, {0.02, byte, 1, 1}, {0.02, byte, 1, 2}, {0.03, 0x90, 1, 1}}};
        EXPECT_EQ(Play(*listener, song, 100, 1000), (std::vector{20, 1000}));
        EXPECT_EQ(listener->offsets, (std::vector{5U, 0U, 0U, 10U}));
    }
}

TEST(MidiPlayerTest, NoBlockGetsMoreThanPluginsTakeAndNothingIsLost) {
    auto const make = [](int early, int late) {
        MidiSong song;
        for (int i = 0; i < early + late; ++i)
            song.messages.push_back({i < early ? 0.0 : 0.004, 0x90, static_cast<std::uint8_t>(i % 100),
                                     static_cast<std::uint8_t>(1 + i / 100)});
        return song;
    };
    struct Case {
        int early, late;
        std::vector<int> blocks;
    };
    for (Case const& one : {Case{256, 0, {10}}, Case{0, 256, {10}}, Case{257, 0, {1, 10}}, Case{10, 250, {4, 10}},
                            Case{0, 257, {4, 1, 10}}, Case{600, 100, {1, 1, 10}}, Case{600, 256, {1, 1, 2, 10}},
                            Case{1500, 0, {1, 1, 1, 1, 1, 10}}}) {
        boost::intrusive_ptr<MidiListener> const listener(new MidiListener);
        MidiSong const song = make(one.early, one.late);
        EXPECT_EQ(Play(*listener, song, 10, 10), one.blocks) << one.early << ' ' << one.late;
        ASSERT_EQ(listener->sent.size(), song.messages.size());
        for (std::size_t i = 0; i < song.messages.size(); ++i)
            EXPECT_EQ(std::get<2>(listener->sent[i]), song.messages[i].data1 + 256 * song.messages[i].data2);
    }
}

} // namespace
