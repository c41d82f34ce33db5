#pragma once

#include "vynhost/MidiScore.h"
#include "vynhost/MidiSong.h"

#include <cstdint>
#include <vector>

namespace vynhost {

/// When the ticks of a MIDI file are. It never changes.
///
/// 1. In front of the first tempo a quarter note lasts half a second. Of several tempos at one tick the last counts.
/// 2. Times of a file that divides frames and not quarter notes know no tempo.
/// 3. A time is rounded once, from whole numbers: it doesn't depend on how many tempos lie in front of it.
class MidiTempoMap {
public:
    /// @param division  as the header of the file has it, 16 bits
    /// @param tempos    in any order; of those at one tick the last counts
    /// Throws std::runtime_error for a division that is none, and as GetSeconds does.
    /// [any-thread]
    MidiTempoMap(std::uint32_t division, std::vector<MidiTempo> tempos);

    /// In seconds from tick 0. Throws std::runtime_error beyond 24 hours.
    /// [any-thread]
    double GetSeconds(std::uint64_t tick) const;

    /// All tempos, beginning at 0. None of a file that divides frames.
    /// [any-thread]
    std::vector<TempoPoint> GetTempos() const;

    /// Places time signatures, given in order of their ticks, in time. None of a file that divides frames.
    /// [any-thread]
    std::vector<MeterPoint> Place(std::vector<MidiMeter> const& meters) const;

private:
    // From a tick on, each tick lasts `step` units.
    struct Segment {
        std::uint64_t tick;
        std::uint64_t units; ///< from tick 0
        std::uint64_t step;
    };

    void Divide(std::uint32_t division);
    double CountQuarters(std::uint64_t tick) const;
    std::uint64_t CountUnits(Segment const& segment, std::uint64_t tick) const;

    std::uint64_t mUnitsPerSecond = 0;
    std::uint32_t mTicksPerQuarter = 0; ///< 0 when frames are divided
    std::vector<Segment> mSegments;     ///< in order of their ticks, the first at 0
};

} // namespace vynhost
