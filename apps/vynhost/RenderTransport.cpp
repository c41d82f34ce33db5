#include "vynhost/RenderTransport.h"

#include <cmath>

namespace vynhost {

bool RenderTransport::GetPlaybackState(vynaudiofilterhost::PlaybackState& state) {
    constexpr double kTempo = 120.0;
    constexpr int kQuartersPerBar = 4;
    state.mSamplePosition = mPosition;
    state.mTempo = kTempo;
    state.mTimeSignatureNumerator = kQuartersPerBar;
    state.mTimeSignatureDenominator = 4;
    state.mMusicalPosition = static_cast<double>(mPosition) / mSampleRate * kTempo / 60.0;
    state.mBarStartPosition = std::floor(state.mMusicalPosition / kQuartersPerBar) * kQuartersPerBar;
    state.mIsPlaying = true;
    return true;
}

} // namespace vynhost
