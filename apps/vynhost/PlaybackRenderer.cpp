#include "vynhost/PlaybackRenderer.h"

#include "guard/OutputGuard.h"
#include "vynhost/PlaybackSource.h"
#include "vynhost/TrackLayout.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <span>
#include <stdexcept>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

// An instrument that plays alone hears as many silent channels as it gives.
vynmediatypes::AudioChannelLayout FindLayout(AudioFilter const& filter, PlaybackSource& source) {
    if (PlaybackAudio const* const audio = source.GetAudio())
        return LayoutOfFile(audio->GetFormat());
    BusSpan const main = FindMainOutput(filter);
    if (main.channels <= 0)
        throw std::runtime_error("the plug-in gives no audio: it has no output bus");
    return filter.GetOutputBuses()[static_cast<std::size_t>(main.bus)].GetLayout();
}

} // namespace

PlaybackRenderer::PlaybackRenderer(AudioFilter& filter, PlaybackSource& source, int blockSize, std::int64_t position,
                                   vynguard::OutputGuard* guard)
    : mFilter(filter),
      mSource(source),
      mGuard(guard),
      mTransport(source.GetSampleRate(), source.GetSong()),
      mLength(source.GetLength()),
      mMidi(source.GetSong(), source.GetSampleRate()) {
    // A song goes on from its start alone: in the middle it would be played from there in one rush.
    if (!source.GetSong())
        mPosition = position % mLength;
    try {
        SetUp(blockSize);
    } catch (...) {
        Release();
        throw;
    }
}

PlaybackRenderer::~PlaybackRenderer() {
    Release();
}

void PlaybackRenderer::SetUp(int blockSize) {
    mFilter.SetAudioFilterHost(&mTransport);
    mFilter.SetRenderingContext(vynaudiofilterhost::kRenderingContextRealTime);
    mFilter.SetSampleRate(static_cast<float>(mSource.GetSampleRate()));
    mFilter.SetBlockSize(blockSize);
    mTrack.emplace(mFilter, TrackRequest{.file = FindLayout(mFilter, mSource)});
    mFilterInputs = mFilter.GetNumberOfInputChannels();
    mFilterOutputs = mFilter.GetNumberOfOutputChannels();

    // The silence flags of a block that the filter cuts up for itself speak of its last piece alone.
    mBlockSize = std::clamp(mFilter.GetMaxProcessingBlockSize(), 1, blockSize);
    mFile.resize(static_cast<std::size_t>(mTrack->GetFileChannels()));
    mInputs.emplace(mTrack->GetChannels(), mBlockSize);
    mOutputs.emplace(mTrack->GetChannels(), mBlockSize);
    mFilter.Resume();
    mLatency = mFilter.GetInitialDelay();
}

void PlaybackRenderer::Release() noexcept {
    try {
        if (!mFilter.IsSuspended())
            mFilter.Suspend();
    } catch (...) {
        // Plug-ins throw where they like; there is nothing left to be done with this one.
    }
    mFilter.SetAudioFilterHost(nullptr);
}

bool PlaybackRenderer::IsCurrent() const {
    return mFilter.GetNumberOfInputChannels() == mFilterInputs &&
           mFilter.GetNumberOfOutputChannels() == mFilterOutputs && mFilter.GetInitialDelay() == mLatency;
}

std::vector<std::string> PlaybackRenderer::Describe() const {
    return mSource.GetAudio() ? mTrack->Describe() : std::vector<std::string>();
}

void PlaybackRenderer::Render(float* const* channels, int samples) noexcept {
    std::int64_t position = GetPosition();
    for (int done = 0; done < samples;) {
        int block = static_cast<int>(std::min<std::int64_t>(std::min(samples - done, mBlockSize), mLength - position));
        try {
            block = StartBlock(position, block);
            ProcessBlock(position, block);
        } catch (...) {
            mSilentOutputs.SetAll();
        }
        Deliver(channels, done, block);
        done += block;
        position = (position + block) % mLength;
        mPosition.store(position, std::memory_order_relaxed);
    }
}

// Sends what is due, and tells how long the block is: blocks end where the song needs it.
int PlaybackRenderer::StartBlock(std::int64_t position, int most) {
    if (position == 0)
        mMidi = MidiPlayer(mSource.GetSong(), mSource.GetSampleRate());
    return mMidi.Advance(mFilter, position, mTransport.CountSteadySamples(position, most));
}

void PlaybackRenderer::ReadSource(std::int64_t position, int samples) {
    PlaybackAudio* const audio = mSource.GetAudio();
    // Plug-ins may write into what they are given to read.
    if (!audio) {
        for (int channel = 0; channel < mInputs->GetChannelCount(); ++channel)
            std::ranges::fill(mInputs->GetChannel(channel, samples), 0.0f);
        return;
    }
    for (std::size_t channel = 0; channel < mFile.size(); ++channel)
        mFile[channel] = audio->GetSamples(channel, position);
    mTrack->GetFit().Apply(mFile.data(), mInputs->GetPointers(), samples);
}

void PlaybackRenderer::ProcessBlock(std::int64_t position, int samples) {
    ReadSource(position, samples);
    for (int channel = 0; channel < mOutputs->GetChannelCount(); ++channel)
        std::ranges::fill(mOutputs->GetChannel(channel, samples), 0.0f);
    mTransport.SetPosition(position);
    mFilter.SetCurrentOffset(position);
    mSilentOutputs.ClearAll();
    if (mGuard)
        mGuard->Run(mOutputs->GetPointers(), mOutputs->GetChannelCount(), samples, mSilentOutputs,
                    [&] { CallFilter(samples); });
    else
        CallFilter(samples);
}

void PlaybackRenderer::CallFilter(int samples) {
    mFilter.ProcessWithMapping(mInputs->GetPointers(), mOutputs->GetPointers(), samples,
                               vynaudiofilterhost::ChannelFlags(), mSilentOutputs);
}

void PlaybackRenderer::Deliver(float* const* channels, int done, int samples) noexcept {
    for (int channel = 0; channel < mOutputs->GetChannelCount(); ++channel) {
        std::span<float const> const output = mOutputs->GetChannel(channel, samples);
        float* const target = channels[channel] + done;
        if (mSilentOutputs.Test(static_cast<unsigned>(channel)))
            std::fill_n(target, samples, 0.0f);
        else
            std::ranges::copy(output, target);
    }
}

} // namespace vynhost
