#include "vynhost/MidiFile.h"
#include "apps/CommandFailure.h"
#include "apps/MidiFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <utility>

using namespace vynhost;
using namespace vyntest;

namespace {

// "seconds status data1 data2; …", hexadecimal but for the time.
std::string TextOf(MidiSong const& song) {
    std::ostringstream text;
    for (MidiMessage const& message : song.messages)
        text << std::dec << message.seconds << std::hex << ' ' << int{message.status} << ' ' << int{message.data1}
             << ' ' << int{message.data2} << "; ";
    return text.str();
}

std::string Parse(std::string const& bytes) {
    return TextOf(ParseMidiFile(bytes));
}

std::string FailureOf(std::string const& bytes) {
    try {
        ParseMidiFile(bytes);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
    return "none";
}

// Tempos, running status, what is passed over, and tracks that go on side by side.
std::string const kWhole =
    MidiHeader(1, 3, 480) +
    MidiTrack({0, 0xFF, 0x51, 3, 0x07, 0xA1, 0x20, 0x83, 0x60, 0xFF, 0x51, 3, 0x0F, 0x42, 0x40}) +
    MidiChunk("Xtra", "passed over") +
    MidiTrack({0, 0x90, 60, 100, 0x83, 0x60, 60, 0, 0, 0xF0, 3, 1, 2, 0xF7, 0, 0xC1, 5, 10, 6}, 0x60) +
    MidiTrack({0, 0xFF, 1, 2, 'h', 'i', 0x83, 0x60, 0xE0, 0, 64, 0, 0xF7, 1, 0xF8}, 1);

TEST(MidiFileTest, MessagesOfAllTracksComeInOrderOfTimeAndThenOfTracks) {
    EXPECT_EQ(Parse(kWhole), "0 90 3c 64; 0.5 80 3c 40; 0.5 c1 5 0; 0.5 e0 0 40; 0.520833 c1 6 0; ");
    EXPECT_DOUBLE_EQ(ParseMidiFile(kWhole).seconds, 0.5 + 106 / 480.0);
}

TEST(MidiFileTest, AnEndThatComesTooEarlyIsToldAndAnyByteMayBeWrong) {
    for (std::size_t size = 0; size < kWhole.size(); ++size)
        EXPECT_NE(FailureOf(kWhole.substr(0, size)), "none") << size;
    EXPECT_EQ(FailureOf(kWhole + std::string(7, '\0')), "none");
    // Whatever a byte becomes, it ends in a song or in a message.
    for (std::size_t place = 0; place < kWhole.size(); ++place) {
        for (int const value : {0x00, 0x01, 0x04, 0x2F, 0x40, 0x51, 0x7F, 0x80, 0x90, 0xC0, 0xF0, 0xF7, 0xFF}) {
            std::string bytes = kWhole;
            bytes[place] = static_cast<char>(value);
            EXPECT_NE(FailureOf(bytes), "");
        }
    }
}

TEST(MidiFileTest, TimesFollowTheTempoMapWithoutDrift) {
    // A quarter note of 333,333 microseconds at each of 3 * 10,000 ticks, where 7 make a quarter.
    std::string track;
    for (int i = 0; i < 10'000; ++i)
        track += MidiText({3, 0xFF, 0x51, 3, 0x05, 0x16, 0x15});
    track += MidiText({0, 0x90, 60, 1, 0, 0xFF, 0x2F, 0});
    MidiSong const song = ParseMidiFile(MidiHeader(0, 1, 7) + MidiChunk("MTrk", track));
    EXPECT_EQ(song.messages.at(0).seconds, (3.0 * 500'000 + 3.0 * 9'999 * 333'333) / 7e6);

    // A tempo that stands in a later track, and two at one tick.
    EXPECT_EQ(Parse(MidiFileText(100, {MidiTrack({100, 0xC0, 1, 100, 0xC0, 2}),
                                       MidiTrack({100, 0xFF, 0x51, 3, 0, 0, 1, 0, 0xFF, 0x51, 3, 0x1E, 0x84, 0x80})})),
              "0.5 c0 1 0; 2.5 c0 2 0; ");
}

TEST(MidiFileTest, TemposAndTimeSignaturesStandInTimeAndQuarterNotes) {
    std::string const meters =
        MidiTrack({0, 0xFF, 0x58, 4,  6, 3, 24,   8,    50, 0xFF, 0x58, 4,  0,    2,    24, 8, 0, 0xFF, 0x58,
                   4, 4,    7,    24, 8, 0, 0xFF, 0x58, 2,  4,    2,    50, 0xFF, 0x58, 4,  3, 2, 24,   8});
    std::string const tempos = MidiTrack({50, 0xFF, 0x51, 3, 0x0F, 0x42, 0x40});
    MidiSong const song = ParseMidiFile(MidiFileText(100, {meters, tempos}));
    ASSERT_EQ(song.tempos.size(), 2U);
    EXPECT_EQ(song.tempos[0].beatsPerMinute, 120.0);
    EXPECT_EQ(song.tempos[1].seconds, 0.25);
    EXPECT_EQ(song.tempos[1].quarters, 0.5);
    EXPECT_EQ(song.tempos[1].beatsPerMinute, 60.0);
    ASSERT_EQ(song.meters.size(), 2U);
    EXPECT_EQ(song.meters[0].numerator, 6);
    EXPECT_EQ(song.meters[0].denominator, 8);
    EXPECT_EQ(song.meters[1].seconds, 0.75);
    EXPECT_EQ(song.meters[1].quarters, 1.0);
    MidiSong const frames = ParseMidiFile(MidiFileText(0xE728, {meters, tempos}));
    EXPECT_TRUE(frames.tempos.empty() && frames.meters.empty());
}

TEST(MidiFileTest, DivisionMayBeOfFramesWhichKnowNoTempo) {
    for (auto const& [division, seconds] :
         {std::pair(0xE728, 0.1), std::pair(0xE864, 100 / 2400.0), std::pair(0xE250, 100 / 2400.0),
          std::pair(0xE364, 100 * 1001 / 3e6), std::pair(0xE7FF, 100 / 6375.0)}) {
        MidiSong const song =
            ParseMidiFile(MidiFileText(division, {MidiTrack({0, 0xFF, 0x51, 3, 0, 0, 1, 100, 0xC0, 1})}));
        EXPECT_EQ(song.seconds, seconds) << division;
    }
}

TEST(MidiFileTest, WhatIsHeldAtTheEndIsReleasedThere) {
    EXPECT_EQ(Parse(MidiFileText(1, {MidiTrack({0,  0x91, 60, 1,  0,   61, 1,  0, 61, 1, 0,   61, 0,    0, 0xB1,
                                                64, 127,  0,  66, 127, 0,  66, 0, 0,  1, 127, 0,  0x82, 9, 9},
                                               2)})),
              "0 91 3c 1; 0 91 3d 1; 0 91 3d 1; 0 81 3d 40; 0 b1 40 7f; 0 b1 42 7f; 0 b1 42 0; 0 b1 1 7f; 0 82 9 9; "
              "1 81 3c 40; 1 81 3d 40; 1 b1 40 0; ");
}

TEST(MidiFileTest, WhatIsNoSongIsToldWithItsPlace) {
    std::string const header = MidiHeader(0, 1, 96);
    auto const track = [&](std::initializer_list<int> bytes) { return header + MidiChunk("MTrk", MidiText(bytes)); };
    for (auto const& [bytes, failure] : std::vector<std::pair<std::string, std::string>>{
             {"", "is no MIDI file: it does not begin with MThd"},
             {"RIFF....RMID", "is no MIDI file"},
             {"MThd", "byte 4: something is missing at the end"},
             {MidiChunk("MThd", MidiText({0, 0, 0, 1})), "byte 12: something is missing at the end"},
             {MidiText({'M', 'T', 'h', 'd', 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}),
              "byte 8: 4294967295 bytes are announced and 2 are left"},
             {MidiHeader(2, 1, 96), "is a MIDI file of format 2, songs side by side: only 0 and 1 can be played"},
             {MidiHeader(9, 1, 96), "is a MIDI file of format 9: only"},
             {MidiHeader(0, 2, 96), "the header announces 2 tracks in format 0"},
             {MidiHeader(1, 0, 96), "the header announces 0 tracks in format 1"},
             {header, "ends in front of track 1 of 1"},
             {MidiHeader(1, 65535, 96) + MidiTrack({}), "ends in front of track 2 of 65535"},
             {header + MidiTrack({}) + MidiTrack({}), "byte 26: there are more tracks than the 1 that the header"},
             {MidiHeader(0, 1, 0) + MidiTrack({}), "the header gives a division of 0 ticks"},
             {MidiHeader(0, 1, 0xE700) + MidiTrack({}), "the header gives a division of 0 ticks"},
             {MidiHeader(0, 1, 0xFF01) + MidiTrack({}), "the header gives 1 frames a second"},
             {MidiHeader(0, 1, 0x8001) + MidiTrack({}), "the header gives 128 frames a second"},
             {header + "MTrk" + MidiNumber(5, 4) + "abcd", "byte 22: 5 bytes are announced and 4 are left"},
             {track({}), "byte 22: the track has no end"},
             {track({0, 0x90, 1, 1}), "byte 26: the track has no end"},
             {track({0}), "byte 23: something is missing"},
             {track({0, 60, 1}), "byte 23: a message has no status"},
             {track({0, 0x90, 1, 1, 0, 0xFF, 1, 0, 0, 1, 1}), "byte 31: a message has no status"},
             {track({0, 0x90, 1, 1, 0, 0xF0, 0, 0, 1, 1}), "byte 30: a message has no status"},
             {track({0, 0x90, 1, 0x80, 0}), "byte 25: a message is cut short by the next"},
             {track({0, 0x90, 0xFF, 0x2F, 0}), "byte 24: a message is cut short by the next"},
             {track({0, 0xF2, 0, 0}), "byte 24: a status that no file may hold: 242"},
             {track({0x81, 0x80, 0x80, 0x80, 0, 0xC0, 1}), "byte 26: a number has more than four bytes"},
             {track({0, 0xF0, 0xFF, 0xFF, 0xFF, 0x7F}), "byte 28: 268435455 bytes are announced and 0 are left"},
             {track({0, 0xFF, 0x51, 2, 1, 1}), "byte 26: a tempo of 2 bytes and not three"},
             {track({0, 0xFF, 0x51, 3, 0, 0, 0}), "byte 29: a tempo of 0"},
             {track({0, 0xFF, 0x2F, 1, 0}), "byte 26: the end of the track holds something"},
             {track({0, 0xFF, 0x2F, 0, 0}), "byte 26: the track goes on behind its end"},
             {MidiHeader(0, 1, 1) + MidiChunk("MTrk", MidiText({0xFF, 0xFF, 0xFF, 0x7F, 0xFF, 0x2F, 0})),
              "lasts longer than 24 hours"},
             {MidiHeader(0, 1, 1) +
                  MidiChunk("MTrk", MidiText({0,    0xFF, 0x51, 3, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F,
                                              0xFF, 0x51, 3,    0, 0,    1,    0,    0xFF, 0x2F, 0})),
              "lasts longer than 24 hours"},
         })
        EXPECT_EQ(FailureOf(bytes).substr(0, failure.size()), failure) << FailureOf(bytes);
}

TEST(MidiFileTest, FailureIsThatOfTheFile) {
    TemporaryFolder const folder;
    std::string const path = WriteMidi(folder.Path() / "song.mid", kWhole.substr(0, 40));
    for (std::string const& name : {path, path + "x"})
        EXPECT_TRUE(vyntest::FailureOf([&] { ReadMidiFile(name); }).starts_with("1 ")) << name;
    WriteMidi(path, kWhole);
    EXPECT_EQ(TextOf(ReadMidiFile(path)), Parse(kWhole));
    std::filesystem::resize_file(path, (64U << 20) + 1);
    EXPECT_THROW(ReadMidiFile(path), CommandError);
}

} // namespace
