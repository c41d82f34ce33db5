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
    ChangeFlag(kVstTransportPlaying, playing);
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
    ChangeFlag(kVstTransportChanged, changed);
    std::uint64_t const now = HighPrecisionTime::ConvertToNanos(HighPrecisionTime::GetCurrentTimeStamp());
    Store(mInfo.nanoSeconds, static_cast<double>(now));
}

// Bit by bit: a start on the main thread and a question on another have different ones to change.
void VSTTimeInfoRecord::ChangeFlag(std::int32_t flag, bool set) noexcept {
    std::atomic_ref<std::int32_t> const flags(mInfo.flags);
    if (set)
        flags.fetch_or(flag, std::memory_order_relaxed);
    else
        flags.fetch_and(~flag, std::memory_order_relaxed);
}

} // namespace vynaudiofilterhost::vst
