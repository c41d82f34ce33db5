#include "vynhost/MidiPlayer.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <algorithm>
#include <cmath>

namespace vynhost {

namespace {

bool BeginsBlock(MidiMessage const& message) {
    int const kind = message.status & 0xF0;
    return kind == 0xB0 || kind == 0xD0 || kind == 0xE0;
}

} // namespace

int MidiPlayer::Advance(vynaudiofilterhost::AudioFilter& filter, std::int64_t position, int most) {
    std::int64_t const end = FindEnd(position, position + most);
    std::size_t const last = std::min(Count(), mNext + kMostMessages);
    mHasSent = false;
    for (; mNext < last && GetSample(mNext) < end; ++mNext) {
        MidiMessage const& message = mSong->messages[mNext];
        auto const offset = static_cast<unsigned>(std::max<std::int64_t>(GetSample(mNext) - position, 0));
        filter.ScheduleMIDIEvent(false, offset, message.status, message.data1, message.data2);
        mHasSent = true;
    }
    return static_cast<int>(end - position);
}

// Where the block ends that begins at this position.
std::int64_t MidiPlayer::FindEnd(std::int64_t position, std::int64_t farthest) const {
    for (std::size_t message = mNext; message < Count() && GetSample(message) < farthest; ++message) {
        std::int64_t const sample = GetSample(message);
        if (message - mNext == kMostMessages)
            return std::max(sample, position + 1);
        if (sample > position && BeginsBlock(mSong->messages[message]))
            return sample;
    }
    return farthest;
}

std::int64_t MidiPlayer::GetSample(std::size_t message) const {
    return std::llround(mSong->messages[message].seconds * mSampleRate);
}

} // namespace vynhost
