#include "vynhost/OfflineRenderer.h"

#include "vynhost/ChannelFit.h"
#include "vynhost/Session.h"

#include <algorithm>
#include <bit>
#include <stdexcept>
#include <utility>

namespace vynhost {

using vynaudiofilterhost::ChannelFlags;

namespace {

constexpr double kAbsurdSeconds = 60.0;
constexpr double kLimitedTailSeconds = 10.0;
constexpr int kFlaggedChannels = 64;

// What output buffers hold before the filter writes them: a number far below hearing that no effect computes by chance.
// What still holds it afterwards was not written.
constexpr float kUnwritten = std::bit_cast<float>(std::uint32_t{0x0002D3A7});

bool IsUnwritten(float sample) {
    return std::bit_cast<std::uint32_t>(sample) == std::bit_cast<std::uint32_t>(kUnwritten);
}

} // namespace

OfflineRenderer::OfflineRenderer(vynaudiofilterhost::AudioFilter& filter, RenderSetup const& setup)
    : mFilter(filter), mSetup(setup), mTransport(setup.sampleRate) {
    try {
        SetUpFilter();
        PrepareBlocks();
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
    RequestMainBuses(mFilter, mSetup.channels);
    mFilter.Resume();
}

void OfflineRenderer::PrepareBlocks() {
    mMainInput = FindMainInput(mFilter);
    mMainOutput = FindMainOutput(mFilter);
    if (mMainOutput.channels <= 0)
        throw std::runtime_error("the plug-in gives no audio: it has no output bus");
    // The silence flags of a block that the filter cuts up for itself speak of its last piece alone.
    mBlockSize = std::clamp(mFilter.GetMaxProcessingBlockSize(), 1, mSetup.blockSize);
    mSourceBuffers.emplace(mSetup.channels, mBlockSize);
    mInputs.emplace(mFilter.GetNumberOfInputChannels(), mBlockSize);
    mOutputs.emplace(mFilter.GetNumberOfOutputChannels(), mBlockSize);
    for (int channel = 0; channel < std::min(mInputs->GetChannelCount(), kFlaggedChannels); ++channel) {
        int const inMain = channel - mMainInput.firstChannel;
        mSilentInputs.Assign(static_cast<unsigned>(channel), inMain < 0 || inMain >= mMainInput.channels);
    }
}

RenderOutcome OfflineRenderer::Run(Source const& source, Sink const& sink) {
    if (std::string note = ChannelFit(mSetup.channels, mMainInput.channels).Describe(); !note.empty())
        Note(std::move(note));
    mOutcome.latency = mSetup.latency.value_or(ReadLatency());
    while (mPosition < GetEnd()) {
        int const samples = static_cast<int>(std::min<std::int64_t>(mBlockSize, GetEnd() - mPosition));
        bool const sounding = ReadBlock(source, samples);
        ProcessBlock(samples);
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

// The tail is asked for when the source runs out, since it may depend on what went before.
std::int64_t OfflineRenderer::GetEnd() {
    if (!mTail && mPosition + mBlockSize < mSetup.samples)
        return mSetup.samples;
    if (!mTail)
        mTail = ReadTail();
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

// True when there is any sound in the block.
bool OfflineRenderer::ReadBlock(Source const& source, int samples) {
    int const wanted = static_cast<int>(std::clamp<std::int64_t>(mSetup.samples - mPosition, 0, samples));
    if (wanted > 0)
        source(mSourceBuffers->GetPointers(), wanted);
    float** const inputs = mInputs->GetPointers() + mMainInput.firstChannel;
    ChannelFit(mSetup.channels, mMainInput.channels).Apply(mSourceBuffers->GetPointers(), inputs, wanted);

    bool sounding = false;
    for (int channel = 0; channel < mMainInput.channels; ++channel) {
        std::fill(inputs[channel] + wanted, inputs[channel] + samples, 0.0f);
        sounding = sounding || std::any_of(inputs[channel], inputs[channel] + wanted, [](float s) { return s != 0; });
    }
    return sounding;
}

void OfflineRenderer::ProcessBlock(int samples) {
    for (int channel = 0; channel < mOutputs->GetChannelCount(); ++channel)
        std::ranges::fill(mOutputs->GetChannel(channel, samples), kUnwritten);
    mTransport.SetPosition(mPosition);
    mFilter.SetCurrentOffset(mPosition);
    mSilentOutputs.ClearAll();

    auto const start = std::chrono::steady_clock::now();
    mFilter.ProcessWithMapping(mInputs->GetPointers(), mOutputs->GetPointers(), samples, mSilentInputs, mSilentOutputs);
    mProcessingTime += std::chrono::steady_clock::now() - start;
    ++mBlocks;
}

// Zeroes what is silent and what was not written. False when the filter neither wrote anything nor said it is silent.
bool OfflineRenderer::TidyOutput(int samples) {
    bool done = false;
    for (int i = 0; i < mMainOutput.channels; ++i) {
        int const channel = mMainOutput.firstChannel + i;
        std::span<float> const output = mOutputs->GetChannel(channel, samples);
        if (channel < kFlaggedChannels && mSilentOutputs.Test(static_cast<unsigned>(channel))) {
            std::ranges::fill(output, 0.0f);
            done = true;
        } else {
            done = done || !std::ranges::all_of(output, IsUnwritten);
            std::ranges::replace_if(output, IsUnwritten, 0.0f);
        }
    }
    return done;
}

void OfflineRenderer::Deliver(Sink const& sink, int samples) {
    int const skipped = static_cast<int>(std::clamp<std::int64_t>(mOutcome.latency - mPosition, 0, samples));
    if (skipped == samples)
        return;
    std::vector<float*> channels;
    for (int i = 0; i < mMainOutput.channels; ++i)
        channels.push_back(mOutputs->GetPointers()[mMainOutput.firstChannel + i] + skipped);
    sink(channels.data(), samples - skipped);
    mOutcome.samples += samples - skipped;
}

void OfflineRenderer::CheckBuses() const {
    if (mFilter.GetNumberOfInputChannels() != mInputs->GetChannelCount() ||
        mFilter.GetNumberOfOutputChannels() != mOutputs->GetChannelCount())
        throw std::runtime_error("the plug-in changed its buses in the middle of the work");
}

void OfflineRenderer::Note(std::string note) {
    if (std::ranges::find(mOutcome.notes, note) == mOutcome.notes.end())
        mOutcome.notes.push_back(std::move(note));
}

RenderOutcome OfflineRenderer::Conclude() {
    if (mUndoneBlocks > 0)
        throw std::runtime_error("the plug-in failed to process " + std::to_string(mUndoneBlocks) + " of " +
                                 std::to_string(mBlocks) + " blocks");
    // What a plug-in has learned of its latency while it worked shows when it is asked anew: suspended, or when it is
    // set up again. Some know it in one of the two states alone, and say 0 in the other.
    mFilter.Suspend();
    int const suspended = ReadLatency();
    mFilter.Resume();
    mOutcome.latencyAfterwards = std::max(suspended, ReadLatency());
    mFilter.Suspend();

    double const seconds = std::max(std::chrono::duration<double>(mProcessingTime).count(), 1e-9);
    mOutcome.timesRealTime = static_cast<double>(mPosition) / mSetup.sampleRate / seconds;
    mOutcome.tail = mTail.value_or(0);
    return std::move(mOutcome);
}

} // namespace vynhost
