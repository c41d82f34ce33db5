#pragma once

#include "vynaudiofilterhost/IAudioFilterHost.h"

#include <atomic>
#include <cstdint>

namespace vynhost {

struct MidiSong;

/// The transport of material that is played over and over: it always plays, and at the end of the material goes back to
/// its start. Tempo and bars are the song's, or without one 120 beats per minute in 4/4. The renderer owns it and moves
/// it; a filter and its editor ask, on whichever thread.
class PlaybackTransport final : public vynaudiofilterhost::IAudioFilterHost {
public:
    /// @param sampleRate  in hertz, above 0
    /// @param song        null for none; else it must outlive the transport
    /// [main-thread]
    PlaybackTransport(double sampleRate, MidiSong const* song) : mSampleRate(sampleRate), mSong(song) {}

    /// Moves to the start of the next block, in samples from the material's start.
    /// [process-thread]
    void SetPosition(std::int64_t samples) noexcept { mPosition.store(samples, std::memory_order_relaxed); }

    /// How many samples from a position on tempo and time signature stay what they are there, `most` at most.
    /// [process-thread]
    int CountSteadySamples(std::int64_t position, int most) const;

    /// [any-thread]
    bool GetPlaybackState(vynaudiofilterhost::PlaybackState& state) override;

private:
    double const mSampleRate;
    MidiSong const* const mSong;
    std::atomic<std::int64_t> mPosition = 0;
};

} // namespace vynhost
