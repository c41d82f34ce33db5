#pragma once

#include "vynhost/MidiSong.h"
#include "vynhost/PlaybackAudio.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vynhost {

/// What is played over and over: an audio file, or the song of a MIDI file, which is known by its name (.mid, .midi).
///
/// Life: made, which looks at the file; Prepare, as soon as the sample rate is known, and again when it is another one.
class PlaybackSource {
public:
    /// Throws CommandError, with the file, for what is no such file, and for a song that lasts no time.
    /// [main-thread]
    explicit PlaybackSource(std::string path);

    /// Brings everything into memory at a sample rate, above 0 hertz. Throws what PlaybackAudio throws; the object is
    /// unprepared then.
    /// [main-thread]
    void Prepare(int sampleRate);

    /// Null for an audio file.
    /// [any-thread]
    MidiSong const* GetSong() const noexcept { return mSong ? &*mSong : nullptr; }

    /// Null for a song, and while it is not prepared.
    /// [any-thread]
    PlaybackAudio* GetAudio() noexcept { return mAudio ? &*mAudio : nullptr; }

    /// In hertz; 0 while it is not prepared.
    /// [any-thread]
    int GetSampleRate() const noexcept { return mSampleRate; }

    /// Samples from the start of one turn to the next; at least a second. A song has room at its end for all that has
    /// to be sent there.
    /// [any-thread]
    std::int64_t GetLength() const;

private:
    std::string mPath;
    std::optional<MidiSong> mSong;
    std::optional<PlaybackAudio> mAudio;
    int mSampleRate = 0;
};

} // namespace vynhost
