#pragma once

#include <cstdint>
#include <vector>

namespace vynhost {

/// One channel message of a song. A plain record.
struct MidiMessage {
    double seconds = 0.0;    ///< from the start of the song
    std::uint8_t status = 0; ///< 0x80..0xEF
    std::uint8_t data1 = 0;  ///< 0..127
    std::uint8_t data2 = 0;  ///< likewise; 0 for messages of one data byte
};

/// A tempo that holds from a time on. A plain record.
struct TempoPoint {
    double seconds = 0.0;
    double quarters = 0.0; ///< up to there, in quarter notes
    double beatsPerMinute = 120.0;
};

/// A time signature that holds from a time on; a bar begins there. A plain record.
struct MeterPoint {
    double seconds = 0.0;
    double quarters = 0.0; ///< up to there, in quarter notes
    int numerator = 4;
    int denominator = 4;
};

/// What is played, all in order of time. A plain record.
struct MidiSong {
    std::vector<MidiMessage> messages = {};
    std::vector<TempoPoint> tempos = {}; ///< none in a song that knows no quarter notes
    std::vector<MeterPoint> meters = {}; ///< likewise
    double seconds = 0.0;                ///< its length; no message is behind it
};

/// Ends what would sound on for ever: appends, at the song's end, a note-off for each note that is still on, and lets
/// go pedals that are held down.
/// [any-thread]
void ReleaseHeld(MidiSong& song);

} // namespace vynhost
