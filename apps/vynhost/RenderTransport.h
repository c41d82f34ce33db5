#pragma once

#include "vynaudiofilterhost/IAudioFilterHost.h"

#include <cstdint>

namespace vynhost {

/// The transport of an offline rendering: it always plays, at 120 beats per minute in 4/4, from the start of the file.
/// The renderer owns it and moves it; a filter only asks.
class RenderTransport final : public vynaudiofilterhost::IAudioFilterHost {
public:
    /// @param sampleRate  in hertz, above 0
    explicit RenderTransport(double sampleRate) : mSampleRate(sampleRate) {}

    /// Moves to the start of the next block, in samples.
    /// [process-thread]
    void SetPosition(std::int64_t samples) noexcept { mPosition = samples; }

    /// [process-thread]
    bool GetPlaybackState(vynaudiofilterhost::PlaybackState& state) override;

private:
    double mSampleRate;
    std::int64_t mPosition = 0;
};

} // namespace vynhost
