#include "vynhost/MidiTempoMap.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

namespace vynhost {

namespace {

constexpr std::uint64_t kMostSeconds = 24 * 60 * 60;
constexpr std::uint32_t kUsualTempo = 500'000;

} // namespace

MidiTempoMap::MidiTempoMap(std::uint32_t division, std::vector<MidiTempo> tempos) {
    Divide(division);
    if (mTicksPerQuarter == 0)
        return;
    std::stable_sort(tempos.begin(), tempos.end(),
                     [](MidiTempo const& left, MidiTempo const& right) { return left.tick < right.tick; });
    for (MidiTempo const& tempo : tempos)
        mSegments.push_back({tempo.tick, CountUnits(mSegments.back(), tempo.tick), tempo.microseconds});
}

// A tick is so many microseconds of a quarter note, divided by the ticks that this has; or a part of a frame.
void MidiTempoMap::Divide(std::uint32_t division) {
    bool const hasTempo = division < 0x8000;
    std::uint32_t const parts = hasTempo ? division : division & 0xFF;
    if (parts == 0)
        throw std::runtime_error("the header gives a division of 0 ticks");
    if (hasTempo) {
        mTicksPerQuarter = parts;
        mUnitsPerSecond = std::uint64_t{1'000'000} * parts;
        mSegments = {{0, 0, kUsualTempo}};
        return;
    }
    std::uint32_t const frames = 0x100 - (division >> 8);
    if (frames != 24 && frames != 25 && frames != 29 && frames != 30)
        throw std::runtime_error("the header gives " + std::to_string(frames) +
                                 " frames a second, which no time code has");
    // 29 stands for 30000 / 1001.
    mUnitsPerSecond = std::uint64_t{frames == 29 ? 30'000 : frames} * parts;
    mSegments = {{0, 0, frames == 29 ? std::uint64_t{1001} : std::uint64_t{1}}};
}

std::uint64_t MidiTempoMap::CountUnits(Segment const& segment, std::uint64_t tick) const {
    std::uint64_t const left = kMostSeconds * mUnitsPerSecond - segment.units;
    if (tick - segment.tick > left / segment.step)
        throw std::runtime_error("lasts longer than 24 hours");
    return segment.units + (tick - segment.tick) * segment.step;
}

double MidiTempoMap::GetSeconds(std::uint64_t tick) const {
    auto const behind = std::upper_bound(mSegments.begin(), mSegments.end(), tick,
                                         [](std::uint64_t wanted, Segment const& at) { return wanted < at.tick; });
    return static_cast<double>(CountUnits(*std::prev(behind), tick)) / static_cast<double>(mUnitsPerSecond);
}

double MidiTempoMap::CountQuarters(std::uint64_t tick) const {
    return static_cast<double>(tick) / mTicksPerQuarter;
}

std::vector<TempoPoint> MidiTempoMap::GetTempos() const {
    std::vector<TempoPoint> points;
    for (Segment const& segment : mSegments) {
        if (mTicksPerQuarter > 0)
            points.push_back(
                {GetSeconds(segment.tick), CountQuarters(segment.tick), 60e6 / static_cast<double>(segment.step)});
    }
    return points;
}

std::vector<MeterPoint> MidiTempoMap::Place(std::vector<MidiMeter> const& meters) const {
    std::vector<MeterPoint> points;
    for (MidiMeter const& meter : meters) {
        if (mTicksPerQuarter > 0)
            points.push_back({GetSeconds(meter.tick), CountQuarters(meter.tick), meter.numerator, meter.denominator});
    }
    return points;
}

} // namespace vynhost
