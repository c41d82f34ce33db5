#pragma once

#include "vynhost/ChannelBuffers.h"
#include "vynhost/MidiPlayer.h"
#include "vynhost/PlaybackTransport.h"
#include "vynhost/Track.h"

#include "vynaudiofilterhost/ChannelRouter.h"

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynguard {
class OutputGuard;
}

namespace vynhost {

class PlaybackSource;

/// Sends what is played over and over through a filter, a block at a time, for whoever plays it as it comes. It knows
/// no sound server. The filter's latency is not compensated.
///
/// Life: made over a suspended filter, which it sets up and resumes; Render; its end suspends the filter again. Filter
/// and source belong to the caller and must outlive it; nobody renders any more when it goes.
class PlaybackRenderer {
public:
    /// @param source     prepared
    /// @param blockSize  most samples that are rendered at a time, at least 1
    /// @param position   to start from, in samples; any that isn't negative
    /// @param guard      stands behind the filter and must outlive the object; null for none
    /// Throws std::runtime_error when the filter gives no audio, and what the plug-in throws; the filter is suspended
    /// then.
    /// [main-thread & suspended]
    PlaybackRenderer(vynaudiofilterhost::AudioFilter& filter, PlaybackSource& source, int blockSize,
                     std::int64_t position = 0, vynguard::OutputGuard* guard = nullptr);
    PlaybackRenderer(PlaybackRenderer const&) = delete;
    PlaybackRenderer& operator=(PlaybackRenderer const&) = delete;
    /// [main-thread]
    ~PlaybackRenderer();

    /// Fills channels[channel][sample] with the next samples, at most the block size. Samples that the filter fails to
    /// give are 0.
    /// [process-thread]
    void Render(float* const* channels, int samples) noexcept;

    /// Of Render.
    /// [any-thread]
    int GetChannels() const noexcept { return mTrack->GetChannels(); }

    /// Whether the filter has still the buses and the latency that it was resumed with. Only a new renderer takes up
    /// others.
    /// [main-thread]
    bool IsCurrent() const;

    /// The filter's latency when it was resumed, in samples.
    /// [main-thread]
    int GetLatency() const noexcept { return mLatency; }

    /// Of the next block, in samples from the start of the source.
    /// [any-thread]
    std::int64_t GetPosition() const noexcept { return mPosition.load(std::memory_order_relaxed); }

    /// What a user should know about how the source fits the filter.
    /// [main-thread]
    std::vector<std::string> Describe() const;

private:
    void SetUp(int blockSize);
    void Release() noexcept;
    int StartBlock(std::int64_t position, int most);
    void ReadSource(std::int64_t position, int samples);
    void ProcessBlock(std::int64_t position, int samples);
    void CallFilter(int samples);
    void Deliver(float* const* channels, int done, int samples) noexcept;

    vynaudiofilterhost::AudioFilter& mFilter;
    PlaybackSource& mSource;
    vynguard::OutputGuard* const mGuard;
    PlaybackTransport mTransport;
    std::int64_t const mLength;
    std::optional<Track> mTrack;
    int mFilterInputs = 0;  ///< channels, all buses together
    int mFilterOutputs = 0; ///< likewise
    int mLatency = 0;

    // Of the process thread from then on.
    MidiPlayer mMidi;
    int mBlockSize = 0;
    std::vector<float*> mFile; ///< where the block begins in each channel
    std::optional<ChannelBuffers> mInputs;
    std::optional<ChannelBuffers> mOutputs;
    vynaudiofilterhost::ChannelFlags mSilentOutputs;

    // Written by the process thread.
    std::atomic<std::int64_t> mPosition = 0;
};

} // namespace vynhost
