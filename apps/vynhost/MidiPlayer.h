#pragma once

#include "vynhost/MidiSong.h"

#include <cstddef>
#include <cstdint>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// Plays a song to an instrument while it renders: it sends what is due, each message to its nearest sample, and says
/// how far may be rendered until something is due again. Time only goes forward. A player is a place in a song; the
/// song belongs to the caller and must outlive it.
///
/// 1. Messages come in the song's order, and every message comes.
/// 2. A block holds at most kMostMessages: some plug-ins take no more. What is beyond them at one sample comes a sample
///    later.
/// 3. Controllers, pitch bends and channel pressure are at the start of a block alone: as parameters, which they become
///    in some plug-ins, they would hold for all of it.
class MidiPlayer {
public:
    static constexpr int kMostMessages = 256;

    /// @param song        null to play nothing
    /// @param sampleRate  of the rendering, in hertz
    /// [any-thread]
    MidiPlayer(MidiSong const* song, double sampleRate) : mSong(song), mSampleRate(sampleRate) {}

    /// Sends the messages of the next block to the filter.
    /// @param position  the block's first sample; not in front of that of the last call
    /// @param most      samples that are to be rendered, above 0
    /// @return          how many of them are the block, above 0
    /// [process-thread]
    int Advance(vynaudiofilterhost::AudioFilter& filter, std::int64_t position, int most);

    /// Whether the last call sent anything.
    /// [process-thread]
    bool HasSent() const noexcept { return mHasSent; }

private:
    std::size_t Count() const noexcept { return mSong ? mSong->messages.size() : 0; }
    std::int64_t GetSample(std::size_t message) const;
    std::int64_t FindEnd(std::int64_t position, std::int64_t farthest) const;

    MidiSong const* mSong;
    double mSampleRate;
    std::size_t mNext = 0;
    bool mHasSent = false;
};

} // namespace vynhost
