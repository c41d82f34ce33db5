#pragma once

#include "vynhost/MidiBytes.h"
#include "vynhost/MidiScore.h"

#include <cstdint>

namespace vynhost {

/// Reads the content of one track of a MIDI file into a score: its channel messages, tempos and time signatures;
/// everything else is passed over. A note-on without velocity is a note-off, and comes as such. One reader reads one
/// track.
class MidiTrackReader {
public:
    /// @param score  gets what is read; must outlive the reader
    /// [any-thread]
    MidiTrackReader(MidiBytes track, MidiScore& score) : mTrack(track), mScore(score) {}

    /// Throws std::runtime_error, with the place, for what is no track, and for a score that grows absurdly large.
    /// [any-thread]
    void Read();

private:
    void ReadEvent();
    void ReadMeta();
    void ReadTempo(MidiBytes content);
    void ReadMeter(MidiBytes content);
    void ReadMessage(std::uint8_t status);
    std::uint8_t TakeData();

    MidiBytes mTrack;
    MidiScore& mScore;
    std::uint64_t mTick = 0;
    std::uint8_t mRunningStatus = 0; ///< 0 for none
    bool mEnded = false;
};

} // namespace vynhost
