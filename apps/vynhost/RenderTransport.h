#pragma once

#include "vynaudiofilterhost/IAudioFilterHost.h"

#include <cstdint>

namespace vynhost {

struct MeterPoint;
struct MidiSong;
struct TempoPoint;

/// The transport of an offline rendering: it always plays, from the start of the file, in the tempo and the bars of the
/// song, or without one at 120 beats per minute in 4/4. The renderer owns it and moves it; a filter only asks.
class RenderTransport final : public vynaudiofilterhost::IAudioFilterHost {
public:
    /// @param sampleRate  in hertz, above 0
    /// @param song        null for none; else it must outlive the transport
    explicit RenderTransport(double sampleRate, MidiSong const* song = nullptr)
        : mSampleRate(sampleRate), mSong(song) {}

    /// Moves to the start of the next block, in samples.
    /// [process-thread]
    void SetPosition(std::int64_t samples) noexcept { mPosition = samples; }

    /// How many samples from a position on tempo and time signature stay what they are there, `most` at most.
    /// [process-thread]
    int CountSteadySamples(std::int64_t position, int most) const;

    /// [process-thread]
    bool GetPlaybackState(vynaudiofilterhost::PlaybackState& state) override;

private:
    TempoPoint GetTempo() const;
    MeterPoint GetMeter() const;

    double mSampleRate;
    MidiSong const* mSong;
    std::int64_t mPosition = 0;
};

} // namespace vynhost
