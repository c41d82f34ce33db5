#pragma once

#include "guard/OutputGuard.h"
#include "vynhost/AutomationPlayer.h"
#include "vynhost/ChannelBuffers.h"
#include "vynhost/FilterStep.h"
#include "vynhost/MidiPlayer.h"
#include "vynhost/RenderTransport.h"
#include "vynhost/Track.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// What is to be rendered.
struct RenderSetup {
    TrackRequest track = {};
    std::int64_t samples = 0; ///< per channel of the source
    double sampleRate = 0.0;  ///< in hertz
    int blockSize = 0;        ///< at least 1
    /// Compensates this latency, in samples, whatever the filter says. Empty: what the filter says.
    std::optional<int> latency = {};
    /// What is done to the running filter before the first sample, in this order. Each is followed by a block of
    /// silence, since some plug-ins look at new values when they process alone; at the end the filter starts afresh.
    std::vector<FilterStep> preparations = {};
    /// Sees the suspended filter when it is prepared. May be empty.
    FilterStep prepared = {};
    /// Of the filter's parameters, from the source's first sample on.
    AutomationPlayer automation = {};
    /// Played by the filter from the source's first sample on, and the measure of its transport. Null for none; else
    /// it must outlive the renderer.
    MidiSong const* song = nullptr;
    /// Renders so many samples behind the source's end. Empty: the filter's tail.
    std::optional<std::int64_t> tail = {};
    /// False when the source's main channels are silent ones that stand for nothing.
    bool hasInput = true;
    /// Whether an OutputGuard stands behind the filter.
    bool guarded = false;
};

/// What became of it.
struct RenderOutcome {
    std::int64_t samples = 0;  ///< per channel, handed to the sink
    int latency = 0;           ///< in samples, compensated
    int latencyAfterwards = 0; ///< what the filter says when it is asked anew after the work
    /// By how many samples channels that go around the filter come too late; negative: too early. 0 without such.
    int lateness = 0;
    std::int64_t tail = 0;                              ///< in samples, rendered behind the source's end
    double timesRealTime = 0.0;                         ///< of the time inside the filter alone
    std::optional<vynguard::OutputGuard::Report> guard; ///< of the source's blocks; empty without
    std::vector<std::string> notes;                     ///< for the user
};

/// Sends audio through a filter, as fast as it goes and block by block, so that memory doesn't grow with the length. It
/// takes audio from a source and gives it to a sink; it knows no files. It never plays anything.
///
/// Life: made over a suspended filter, which it sets up and resumes; Run once; its end suspends the filter again. The
/// filter belongs to the caller and must outlive it.
///
/// What comes out is in step with what went in: the filter's latency is cut off in front and rendered behind, and the
/// filter's tail follows. An endless or absurd tail is limited to ten seconds. The filter itself delays what goes
/// around it, by the latency that it says when it is resumed; for one that is given another latency and learns it only
/// from audio, a block of silence comes first.
///
/// Blocks end where the automation has something to set, where the song needs it, and where the source ends. So what is
/// heard doesn't depend on the block size, as far as the filter's own work doesn't.
class OfflineRenderer {
public:
    /// Fills channels[channel][sample] with the next samples of the source: the file's channels, those of the side
    /// chain behind them.
    using Source = std::function<void(float* const* channels, int samples)>;
    /// Takes the next samples of the result, the track's main channels. They may be changed in place.
    using Sink = std::function<void(float* const* channels, int samples)>;

    /// Sets the filter up, prepares and resumes it. Throws what Track and the preparations throw.
    /// [main-thread & suspended]
    OfflineRenderer(vynaudiofilterhost::AudioFilter& filter, RenderSetup setup);
    OfflineRenderer(OfflineRenderer const&) = delete;
    OfflineRenderer& operator=(OfflineRenderer const&) = delete;
    /// [main-thread]
    ~OfflineRenderer();

    /// [main-thread]
    int GetOutputChannels() const noexcept { return mTrack->GetChannels(); }

    /// Of the source, without the side chain.
    /// [main-thread]
    int GetSourceChannels() const noexcept { return mTrack->GetFileChannels(); }

    /// Renders everything on the calling thread, which is the process thread meanwhile, and runs the main thread's
    /// calls between blocks. Throws std::runtime_error when the filter doesn't do the work, and what source and sink
    /// throw.
    /// [main-thread]
    RenderOutcome Run(Source const& source, Sink const& sink);

private:
    void SetUpFilter();
    void PrepareBlocks();
    void PrepareFilter();
    void StartFilter();
    void ProcessSilence();
    void ReleaseFilter() noexcept;
    std::int64_t GetEnd();
    int ReadLatency();
    std::int64_t ReadTail();
    int StartBlock();
    bool ReadBlock(Source const& source, int samples);
    void ProcessBlock(int samples);
    void CallFilter(int samples);
    bool TidyOutput(int samples);
    void Deliver(Sink const& sink, int samples);
    void CheckBuses() const;
    void Note(std::string note);
    void CompareLatencies();
    RenderOutcome Conclude();

    vynaudiofilterhost::AudioFilter& mFilter;
    RenderSetup mSetup;
    RenderTransport mTransport;
    MidiPlayer mMidi;
    std::optional<vynguard::OutputGuard> mGuard;
    std::optional<Track> mTrack;
    int mBlockSize = 0;
    int mFilterInputs = 0;  ///< channels, all buses together
    int mFilterOutputs = 0; ///< likewise
    int mDelayAround = 0;   ///< of channels that go around, in samples
    vynaudiofilterhost::ChannelFlags mSilentOutputs;
    std::optional<ChannelBuffers> mFile;
    std::optional<ChannelBuffers> mInputs;  ///< of the track, with the side chain
    std::optional<ChannelBuffers> mOutputs; ///< of the track
    std::vector<float*> mSourceChannels;
    std::vector<float*> mDelivered;

    std::int64_t mPosition = 0;
    std::optional<std::int64_t> mTail;
    std::chrono::steady_clock::duration mProcessingTime{};
    std::int64_t mBlocks = 0;
    std::int64_t mUndoneBlocks = 0;
    RenderOutcome mOutcome;
};

} // namespace vynhost
