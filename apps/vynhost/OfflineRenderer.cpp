#include "vynhost/OfflineRenderer.h"

#include "vynhost/Session.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

constexpr double kAbsurdSeconds = 60.0;
constexpr double kLimitedTailSeconds = 10.0;

// What output buffers hold before the filter writes them: a number far below hearing that no effect computes by chance.
// What still holds it afterwards was not written.
constexpr float kUnwritten = std::bit_cast<float>(std::uint32_t{0x0002D3A7});

bool IsUnwritten(float sample) {
    return std::bit_cast<std::uint32_t>(sample) == std::bit_cast<std::uint32_t>(kUnwritten);
}

} // namespace

OfflineRenderer::OfflineRenderer(vynaudiofilterhost::AudioFilter& filter, RenderSetup setup)
    : mFilter(filter),
      mSetup(std::move(setup)),
      mTransport(mSetup.sampleRate, mSetup.song),
      mMidi(mSetup.song, mSetup.sampleRate) {
    try {
        SetUpFilter();
        PrepareBlocks();
        PrepareFilter();
        StartFilter();
    } catch (...) {
        ReleaseFilter();
        throw;
    }
}

OfflineRenderer::~OfflineRenderer() {
    ReleaseFilter();
}

void OfflineRenderer::ReleaseFilter() noexcept {
    try {
        if (!mFilter.IsSuspended())
            mFilter.Suspend();
    } catch (...) {
        // Plug-ins throw where they like; there is nothing left to be done with this one.
    }
    mFilter.SetAudioFilterHost(nullptr);
}

void OfflineRenderer::SetUpFilter() {
    mFilter.SetAudioFilterHost(&mTransport);
    mFilter.SetRenderingContext(vynaudiofilterhost::kRenderingContextOffline);
    mFilter.SetSampleRate(static_cast<float>(mSetup.sampleRate));
    mFilter.SetBlockSize(mSetup.blockSize);
    if (mSetup.guarded)
        mGuard.emplace();
    mTrack.emplace(mFilter, mSetup.track);
    mFilterInputs = mFilter.GetNumberOfInputChannels();
    mFilterOutputs = mFilter.GetNumberOfOutputChannels();
}

void OfflineRenderer::PrepareBlocks() {
    // The silence flags of a block that the filter cuts up for itself speak of its last piece alone.
    mBlockSize = std::clamp(mFilter.GetMaxProcessingBlockSize(), 1, mSetup.blockSize);
    int const channels = mTrack->GetChannels();
    mFile.emplace(mTrack->GetFileChannels(), mBlockSize);
    mInputs.emplace(channels + mTrack->GetSideChainChannels(), mBlockSize);
    mOutputs.emplace(channels, mBlockSize);
    mDelivered.resize(static_cast<std::size_t>(channels));
    mSourceChannels.assign(mFile->GetPointers(), mFile->GetPointers() + mFile->GetChannelCount());
    mSourceChannels.insert(mSourceChannels.end(), mInputs->GetPointers() + channels,
                           mInputs->GetPointers() + mInputs->GetChannelCount());
}

void OfflineRenderer::PrepareFilter() {
    if (!mSetup.preparations.empty()) {
        mFilter.Resume();
        for (FilterStep const& prepare : mSetup.preparations) {
            prepare(mFilter);
            ProcessSilence();
        }
        mFilter.Suspend();
    }
    if (mSetup.prepared)
        mSetup.prepared(mFilter);
}

void OfflineRenderer::StartFilter() {
    mFilter.Resume();
    if (mSetup.latency && *mSetup.latency != mFilter.GetInitialDelay()) {
        ProcessSilence();
        mFilter.Suspend();
        mFilter.Resume();
    }
    mDelayAround = ReadLatency();
}

// In front of the first sample, while the inputs hold nothing yet.
void OfflineRenderer::ProcessSilence() {
    ProcessBlock(mBlockSize);
    Session::RunDueCalls();
    CheckBuses();
}

RenderOutcome OfflineRenderer::Run(Source const& source, Sink const& sink) {
    if (mSetup.hasInput)
        std::ranges::for_each(mTrack->Describe(), [this](std::string const& note) { Note(note); });
    mOutcome.latency = mSetup.latency.value_or(mDelayAround);
    mProcessingTime = {};
    if (mSetup.guarded)
        mGuard.emplace();
    while (mPosition < GetEnd()) {
        int const samples = StartBlock();
        bool const sounding = ReadBlock(source, samples) || mMidi.HasSent();
        ProcessBlock(samples);
        ++mBlocks;
        Session::RunDueCalls();
        CheckBuses();
        // Some plug-ins know their latency only when they have processed a block.
        if (mPosition == 0 && !mSetup.latency)
            mOutcome.latency = ReadLatency();
        if (!TidyOutput(samples) && sounding)
            ++mUndoneBlocks;
        Deliver(sink, samples);
        mPosition += samples;
    }
    return Conclude();
}

// Sets and sends what is due, and tells how long the block is.
int OfflineRenderer::StartBlock() {
    int const wanted = static_cast<int>(std::min<std::int64_t>(mBlockSize, GetEnd() - mPosition));
    int const steady = mTransport.CountSteadySamples(mPosition, wanted);
    int const samples = mSetup.automation.Advance(mFilter, mPosition, steady);
    return mMidi.Advance(mFilter, mPosition, samples);
}

// The tail is asked for when all of the source has gone in, since it may depend on what went before.
std::int64_t OfflineRenderer::GetEnd() {
    if (mPosition < mSetup.samples)
        return mSetup.samples;
    if (!mTail)
        mTail = mSetup.tail ? *mSetup.tail : ReadTail();
    return mSetup.samples + *mTail + mOutcome.latency;
}

int OfflineRenderer::ReadLatency() {
    int const latency = mFilter.GetInitialDelay();
    if (latency >= 0 && latency <= kAbsurdSeconds * mSetup.sampleRate)
        return latency;
    Note("the plug-in's latency of " + std::to_string(latency) + " samples is absurd and taken as none");
    return 0;
}

std::int64_t OfflineRenderer::ReadTail() {
    int const tail = mFilter.GetTail();
    if (tail >= 0 && tail <= kAbsurdSeconds * mSetup.sampleRate)
        return tail;
    Note((tail == -1 ? "the plug-in's tail is endless" : "the plug-in's tail is absurdly long") +
         std::string(": cut after 10 seconds"));
    return static_cast<std::int64_t>(kLimitedTailSeconds * mSetup.sampleRate);
}

// True when the filter is given any sound in this block.
bool OfflineRenderer::ReadBlock(Source const& source, int samples) {
    int const wanted = static_cast<int>(std::clamp<std::int64_t>(mSetup.samples - mPosition, 0, samples));
    if (wanted > 0)
        source(mSourceChannels.data(), wanted);
    mTrack->GetFit().Apply(mFile->GetPointers(), mInputs->GetPointers(), wanted);

    bool sounding = false;
    for (int channel = 0; channel < mInputs->GetChannelCount(); ++channel) {
        std::span<float> const input = mInputs->GetChannel(channel, samples);
        std::ranges::fill(input.subspan(static_cast<std::size_t>(wanted)), 0.0f);
        bool const taken = channel < mTrack->GetChannels() && mTrack->IsRead(channel);
        sounding = sounding || (taken && std::ranges::any_of(input, [](float sample) { return sample != 0; }));
    }
    return sounding;
}

void OfflineRenderer::ProcessBlock(int samples) {
    for (int channel = 0; channel < mOutputs->GetChannelCount(); ++channel)
        std::ranges::fill(mOutputs->GetChannel(channel, samples), kUnwritten);
    mTransport.SetPosition(mPosition);
    mFilter.SetCurrentOffset(mPosition);
    mSilentOutputs.ClearAll();
    if (mGuard)
        mGuard->Run(mOutputs->GetPointers(), mOutputs->GetChannelCount(), samples, mSilentOutputs,
                    [&] { CallFilter(samples); });
    else
        CallFilter(samples);
}

void OfflineRenderer::CallFilter(int samples) {
    auto const start = std::chrono::steady_clock::now();
    mFilter.ProcessWithMapping(mInputs->GetPointers(), mOutputs->GetPointers(), samples,
                               vynaudiofilterhost::ChannelFlags(), mSilentOutputs);
    mProcessingTime += std::chrono::steady_clock::now() - start;
}

// Zeroes what is silent and what was not written. False when the filter neither wrote anything nor said it is silent.
// Of channels that share a flag none sounds when it is set.
bool OfflineRenderer::TidyOutput(int samples) {
    bool done = false;
    bool fed = false;
    for (int channel = 0; channel < mOutputs->GetChannelCount(); ++channel) {
        std::span<float> const output = mOutputs->GetChannel(channel, samples);
        bool const silent = mSilentOutputs.Test(static_cast<unsigned>(channel));
        bool const written = silent || !std::ranges::all_of(output, IsUnwritten);
        fed = fed || mTrack->IsFed(channel);
        done = done || (written && mTrack->IsFed(channel));
        if (silent)
            std::ranges::fill(output, 0.0f);
        else
            std::ranges::replace_if(output, IsUnwritten, 0.0f);
    }
    return done || !fed;
}

void OfflineRenderer::Deliver(Sink const& sink, int samples) {
    int const skipped = static_cast<int>(std::clamp<std::int64_t>(mOutcome.latency - mPosition, 0, samples));
    if (skipped == samples)
        return;
    std::transform(mOutputs->GetPointers(), mOutputs->GetPointers() + mOutputs->GetChannelCount(), mDelivered.begin(),
                   [skipped](float* channel) { return channel + skipped; });
    sink(mDelivered.data(), samples - skipped);
    mOutcome.samples += samples - skipped;
}

void OfflineRenderer::CheckBuses() const {
    if (mFilter.GetNumberOfInputChannels() != mFilterInputs || mFilter.GetNumberOfOutputChannels() != mFilterOutputs)
        throw std::runtime_error("the plug-in changed its buses in the middle of the work");
}

void OfflineRenderer::Note(std::string note) {
    if (std::ranges::find(mOutcome.notes, note) == mOutcome.notes.end())
        mOutcome.notes.push_back(std::move(note));
}

// What a plug-in has learned of its latency while it worked shows when it is asked anew: suspended, or when it is set
// up again. Some know it in one of the two states alone, and say 0 in the other.
void OfflineRenderer::CompareLatencies() {
    mFilter.Suspend();
    int const suspended = ReadLatency();
    mFilter.Resume();
    mOutcome.latencyAfterwards = std::max(suspended, ReadLatency());
    mFilter.Suspend();
    if (mTrack->HasChannelsAround())
        mOutcome.lateness = mDelayAround - mOutcome.latency;
    if (mOutcome.lateness != 0)
        Note("channels that go around the plug-in are out of step with it: " +
             std::to_string(std::abs(mOutcome.lateness)) + " samples " + (mOutcome.lateness < 0 ? "early" : "late"));
}

RenderOutcome OfflineRenderer::Conclude() {
    if (mUndoneBlocks > 0)
        throw std::runtime_error("the plug-in failed to process " + std::to_string(mUndoneBlocks) + " of " +
                                 std::to_string(mBlocks) + " blocks");
    CompareLatencies();
    if (std::int64_t const points = mSetup.automation.CountPointsFrom(mPosition); points > 0)
        Note(points == 1 ? "1 point of the automation lies behind the end"
                         : std::to_string(points) + " points of the automation lie behind the end");
    double const seconds = std::max(std::chrono::duration<double>(mProcessingTime).count(), 1e-9);
    mOutcome.timesRealTime = static_cast<double>(mPosition) / mSetup.sampleRate / seconds;
    mOutcome.tail = mTail.value_or(0);
    if (mGuard)
        mOutcome.guard = mGuard->GetReport();
    return std::move(mOutcome);
}

} // namespace vynhost
