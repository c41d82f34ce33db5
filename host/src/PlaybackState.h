#pragma once

#include <cstdint>

namespace vynaudiofilterhost {

namespace utility {

/// Time code formats as PlaybackState::mTimecodeFormat numbers them.
enum TimecodeFormat : std::int32_t { kTimecodeFormat_Decimal = 0 };

} // namespace utility

/// The transport at the start of a block, as the embedding application tells it (IAudioFilterHost).
/// A filter prefills the record with these values, so that a host that fills only part of it still yields a sane
/// answer.
struct PlaybackState {
    std::int32_t mTimecodeFormat = -1; ///< a utility::TimecodeFormat, -1 for none
    std::int32_t mCurrentFPS = 0;      ///< frames per second of the time code
    std::int32_t mCustomFPS = 0;       ///< custom frame rate
    std::int64_t mSamplePosition = 0;  ///< position of the block, in samples
    std::uint64_t mReserved1 = 0;      ///< not read by this library
    std::int32_t mReserved2 = 1920;    ///< not read by this library
    double mTempo = 120.0;             ///< beats per minute
    std::int32_t mTimeSignatureNumerator = 4;
    std::int32_t mTimeSignatureDenominator = 4;
    double mReserved3 = 0.0;        ///< not read by this library
    double mMusicalPosition = 0.0;  ///< in quarter notes
    double mBarStartPosition = 0.0; ///< in quarter notes
    std::uint32_t mReserved4 = 0;   ///< not read by this library
    bool mIsPlaying = false;
    bool mIsRecording = false;
    bool mIsLooping = false;
};

} // namespace vynaudiofilterhost
