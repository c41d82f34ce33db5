#include "vynhost/RenderTransport.h"

#include "vynhost/MidiSong.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vynhost {

namespace {

template <class Point>
std::int64_t GetSample(Point const& point, double sampleRate) {
    return std::llround(point.seconds * sampleRate);
}

// The first point behind a sample.
template <class Point>
auto FindBehind(std::vector<Point> const& points, std::int64_t sample, double sampleRate) {
    return std::upper_bound(
        points.begin(), points.end(), sample,
        [sampleRate](std::int64_t wanted, Point const& point) { return wanted < GetSample(point, sampleRate); });
}

template <class Point>
Point FindLast(std::vector<Point> const& points, std::int64_t sample, double sampleRate) {
    auto const behind = FindBehind(points, sample, sampleRate);
    return behind == points.begin() ? Point() : *std::prev(behind);
}

template <class Point>
std::int64_t FindNext(std::vector<Point> const& points, std::int64_t sample, double sampleRate, std::int64_t farthest) {
    auto const behind = FindBehind(points, sample, sampleRate);
    return behind == points.end() ? farthest : std::min(farthest, GetSample(*behind, sampleRate));
}

} // namespace

int RenderTransport::CountSteadySamples(std::int64_t position, int most) const {
    if (!mSong)
        return most;
    std::int64_t const tempo = FindNext(mSong->tempos, position, mSampleRate, position + most);
    return static_cast<int>(FindNext(mSong->meters, position, mSampleRate, tempo) - position);
}

TempoPoint RenderTransport::GetTempo() const {
    return mSong ? FindLast(mSong->tempos, mPosition, mSampleRate) : TempoPoint();
}

MeterPoint RenderTransport::GetMeter() const {
    return mSong ? FindLast(mSong->meters, mPosition, mSampleRate) : MeterPoint();
}

bool RenderTransport::GetPlaybackState(vynaudiofilterhost::PlaybackState& state) {
    TempoPoint const tempo = GetTempo();
    MeterPoint const meter = GetMeter();
    // The sample at which a point takes effect may be a little ahead of it.
    double const seconds = std::max(static_cast<double>(mPosition) / mSampleRate - tempo.seconds, 0.0);
    double const quarters = std::max(tempo.quarters + seconds * tempo.beatsPerMinute / 60.0, meter.quarters);
    double const quartersPerBar = 4.0 * meter.numerator / meter.denominator;
    state.mSamplePosition = mPosition;
    state.mTempo = tempo.beatsPerMinute;
    state.mTimeSignatureNumerator = meter.numerator;
    state.mTimeSignatureDenominator = meter.denominator;
    state.mMusicalPosition = quarters;
    state.mBarStartPosition =
        meter.quarters + std::floor((quarters - meter.quarters) / quartersPerBar) * quartersPerBar;
    state.mIsPlaying = true;
    return true;
}

} // namespace vynhost
