#include "vynaudiofilterhost/VST/src/VSTTimeInfoRecord.h"

#include "vynaudiofilterhost/PlaybackState.h"
#include "vyncore/utility/HighPrecisionTime.h"

namespace vynaudiofilterhost::vst {

using vyncore::utility::HighPrecisionTime;

namespace {

template <class T>
void Store(T& field, T value) noexcept {
    std::atomic_ref<T>(field).store(value, std::memory_order_relaxed);
}

} // namespace

VSTTimeInfoRecord::VSTTimeInfoRecord() {
    PlaybackState const start;
    mInfo.tempo = start.mTempo;
    mInfo.timeSigNumerator = start.mTimeSignatureNumerator;
    mInfo.timeSigDenominator = start.mTimeSignatureDenominator;
    mInfo.smpteFrameRate = 1;
    mInfo.flags = kVstNanosValid | kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstTimeSigValid;
}

void VSTTimeInfoRecord::SetSampleRate(double sampleRate) noexcept {
    Store(mInfo.sampleRate, sampleRate);
}

void VSTTimeInfoRecord::SetPlaying(bool playing) noexcept {
    ChangeFlags(kVstTransportPlaying, playing ? kVstTransportPlaying : 0);
    mTransportChanged.store(true, std::memory_order_release);
}

void VSTTimeInfoRecord::ResetPosition() noexcept {
    Store(mInfo.samplePos, 0.0);
}

void VSTTimeInfoRecord::SetPlaybackState(PlaybackState const& state) noexcept {
    Store(mInfo.timeSigNumerator, state.mTimeSignatureNumerator);
    Store(mInfo.timeSigDenominator, state.mTimeSignatureDenominator);
    Store(mInfo.tempo, state.mTempo);
    Store(mInfo.samplePos, static_cast<double>(state.mSamplePosition));
    Store(mInfo.ppqPos, state.mMusicalPosition);
    Store(mInfo.barStartPos, state.mBarStartPosition);
}

void VSTTimeInfoRecord::Touch() noexcept {
    bool const changed = mTransportChanged.exchange(false, std::memory_order_acq_rel);
    ChangeFlags(kVstTransportChanged, changed ? kVstTransportChanged : 0);
    std::uint64_t const now = HighPrecisionTime::ConvertToNanos(HighPrecisionTime::GetCurrentTimeStamp());
    Store(mInfo.nanoSeconds, static_cast<double>(now));
}

// The effect may have written into its host's record: only what is meant is changed.
void VSTTimeInfoRecord::ChangeFlags(std::int32_t cleared, std::int32_t set) noexcept {
    std::atomic_ref<std::int32_t> const flags(mInfo.flags);
    flags.store((flags.load(std::memory_order_relaxed) & ~cleared) | set, std::memory_order_relaxed);
}

} // namespace vynaudiofilterhost::vst
