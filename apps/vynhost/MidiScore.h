#pragma once

#include <cstdint>
#include <vector>

namespace vynhost {

/// A channel message where a MIDI file has it. A plain record.
struct MidiScoreMessage {
    std::uint64_t tick;
    std::uint8_t status, data1, data2;
};

/// A tempo that holds from a tick on. A plain record.
struct MidiTempo {
    std::uint64_t tick;
    std::uint32_t microseconds; ///< of a quarter note, above 0
};

/// A time signature that holds from a tick on. A plain record.
struct MidiMeter {
    std::uint64_t tick;
    int numerator; ///< above 0
    int denominator;
};

/// What the tracks of a MIDI file hold, one track behind the other. Ticks count from the start of the song. A plain
/// record.
struct MidiScore {
    std::vector<MidiScoreMessage> messages;
    std::vector<MidiTempo> tempos;
    std::vector<MidiMeter> meters;
    std::uint64_t end = 0; ///< of the longest track, a tick
};

} // namespace vynhost
