#include "vynhost/EditPlayback.h"

#include "vynhost/ChannelFit.h"
#include "vynhost/GuardNotes.h"
#include "vynhost/JackPlayer.h"
#include "vynhost/PlaybackRenderer.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include "os/Clock.h"

#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

// A plug-in that never settles shall not keep the main thread busy.
constexpr std::uint64_t kNanosBetweenStarts = 1'000'000'000;

constexpr char const* kWithoutSound = "editing without sound";

} // namespace

EditPlayback::EditPlayback(vynaudiofilterhost::AudioFilter& filter, std::string const& path, bool guarded)
    : mFilter(filter), mSource(path) {
    if (guarded)
        mGuard.emplace();
    if (mSource.GetSong() && !mFilter.IsMusicDevice())
        throw std::runtime_error("is no instrument: it plays no MIDI file");
}

EditPlayback::~EditPlayback() {
    Stop();
}

void EditPlayback::Start() {
    Stop();
    if (!OpenPlayer())
        return;
    try {
        StartSound();
    } catch (...) {
        Stop();
        throw;
    }
}

bool EditPlayback::OpenPlayer() {
    try {
        mPlayer = std::make_unique<JackPlayer>("vynhost");
        return true;
    } catch (std::runtime_error const& error) {
        Note(error.what() + std::string("; ") + kWithoutSound);
        return false;
    }
}

void EditPlayback::StartSound() {
    mSource.Prepare(mPlayer->GetSampleRate());
    mRenderer = std::make_unique<PlaybackRenderer>(mFilter, mSource, mPlayer->GetBlockSize(), mPosition,
                                                   mGuard ? &*mGuard : nullptr);
    mStartedNanos = os::GetMonotonicNanos();
    for (std::string& note : mRenderer->Describe())
        Note(std::move(note));
    int const channels = mRenderer->GetChannels();
    try {
        mPlayer->Start(channels, [renderer = mRenderer.get()](float* const* buffers, int samples) {
            renderer->Render(buffers, samples);
        });
    } catch (std::runtime_error const& error) {
        Note(error.what() + std::string("; ") + kWithoutSound);
        Stop();
        return;
    }
    int const connected = mPlayer->GetConnectedChannels();
    if (connected == 0)
        Note("the JACK server has no playback ports to connect with: nothing is heard until you connect some");
    else if (connected < channels)
        Note("the JACK server has playback ports for " + CountText(connected) + " of " + std::to_string(channels) +
             " alone");
}

void EditPlayback::Stop() noexcept {
    if (mPlayer)
        mPlayer->Stop();
    if (mRenderer)
        mPosition = mRenderer->GetPosition();
    mRenderer.reset();
    mPlayer.reset();
}

void EditPlayback::Finish() {
    Stop();
    if (!mGuard)
        return;
    for (std::string& note : DescribeGuard(mGuard->GetReport()))
        Note(std::move(note));
}

void EditPlayback::Attend() {
    if (!mRenderer)
        return;
    if (mGuard && mGuard->GetReport().silenced > 0)
        Note("the plug-in gives sound that is no number or beyond +60 dB: it is silenced");
    if (mPlayer->HasEnded()) {
        Stop();
        Note(std::string("the JACK server has ended, or has let go of vynhost; ") + kWithoutSound);
    } else if (MustStartAnew()) {
        StartAnew();
    }
}

// Some plug-ins say their latency only after their first block, and have forgotten it at the next start: each is
// answered once.
bool EditPlayback::MustStartAnew() {
    if (mPlayer->HasChanged())
        return true;
    if (mRenderer->IsCurrent() || os::GetMonotonicNanos() - mStartedNanos < kNanosBetweenStarts)
        return false;
    int const latency = mFilter.GetInitialDelay();
    if (latency == mRenderer->GetLatency())
        return true;
    return std::exchange(mAnsweredLatency, latency) != latency;
}

void EditPlayback::StartAnew() {
    try {
        Start();
    } catch (std::exception const& error) {
        Note(std::string("can't play on: ") + error.what() + "; " + kWithoutSound);
    } catch (...) {
        Note(std::string("can't play on: the plug-in threw an exception; ") + kWithoutSound);
    }
}

void EditPlayback::Note(std::string note) {
    if (mTold.insert(note).second)
        mNotes.push_back(std::move(note));
}

std::vector<std::string> EditPlayback::TakeNotes() {
    return std::exchange(mNotes, {});
}

} // namespace vynhost
