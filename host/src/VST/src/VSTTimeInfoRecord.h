#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <atomic>
#include <cstdint>

namespace vynaudiofilterhost {
struct PlaybackState;
}

namespace vynaudiofilterhost::vst {

/// The one time record that a filter hands to its effect, at one address for the filter's life. The effect reads it as
/// it likes; who asks for the time fills it, on any thread as a rule the process thread. Each field is written whole.
class VSTTimeInfoRecord {
public:
    /// Stopped, at 120 quarter notes a minute in 4/4.
    /// [main-thread]
    VSTTimeInfoRecord();

    /// In hertz. [main-thread]
    void SetSampleRate(double sampleRate) noexcept;

    /// Starts or stops, which the effect is told once.
    /// [main-thread]
    void SetPlaying(bool playing) noexcept;

    /// [main-thread]
    void ResetPosition() noexcept;

    /// What the application says of its transport.
    /// [any-thread]
    void SetPlaybackState(PlaybackState const& state) noexcept;

    /// Marks whether the transport has changed since the last call, and the time of this one.
    /// [any-thread]
    void Touch() noexcept;

    /// [any-thread]
    VstTimeInfo* Get() noexcept { return &mInfo; }

private:
    void ChangeFlag(std::int32_t flag, bool set) noexcept;

    VstTimeInfo mInfo{};
    std::atomic<bool> mTransportChanged{false};
};

} // namespace vynaudiofilterhost::vst
