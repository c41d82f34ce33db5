#pragma once

#include "guard/OutputGuard.h"
#include "vynhost/PlaybackSource.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

class JackPlayer;
class PlaybackRenderer;

/// Plays a file over and over through a filter into the JACK server, so that what is edited is heard. Without a server,
/// and after its end, there is no sound and a note.
///
/// Life: made, which looks at the file; Start; Attend as long as it plays; Stop. The filter is running while
/// IsPlaying and suspended otherwise; then its host and its buses are this object's, and nobody else renders. It
/// belongs to the caller and must outlive the object.
class EditPlayback {
public:
    /// @param filter  new and suspended
    /// @param path    of an audio file, or for an instrument of a MIDI file
    /// @param guarded whether an OutputGuard stands behind the filter
    /// Throws CommandError for the file, and std::runtime_error for a MIDI file and a filter that is no instrument.
    /// [main-thread & suspended]
    EditPlayback(vynaudiofilterhost::AudioFilter& filter, std::string const& path, bool guarded = true);
    EditPlayback(EditPlayback const&) = delete;
    EditPlayback& operator=(EditPlayback const&) = delete;
    /// [main-thread]
    ~EditPlayback();

    /// Gives the filter the server's sample rate and block size, resumes it and plays. Throws CommandError for the file
    /// and what the plug-in throws; the filter is suspended then.
    /// [main-thread & suspended]
    void Start();

    /// Silence, and the filter is suspended. May be called at any time.
    /// [main-thread]
    void Stop() noexcept;

    /// Stops for good, and notes what the guard had to do.
    /// [main-thread]
    void Finish();

    /// To be called often. Starts anew, from where it is, when the server's block size has changed, or the filter's
    /// buses or latency; comes to rest when the server has gone.
    /// [main-thread]
    void Attend();

    /// [main-thread]
    bool IsPlaying() const noexcept { return mRenderer != nullptr; }

    /// What the user should know, each thing once. They are gone from here then.
    /// [main-thread]
    std::vector<std::string> TakeNotes();

private:
    bool OpenPlayer();
    void StartSound();
    bool MustStartAnew();
    void StartAnew();
    void Note(std::string note);

    vynaudiofilterhost::AudioFilter& mFilter;
    PlaybackSource mSource;
    std::optional<vynguard::OutputGuard> mGuard;
    std::unique_ptr<JackPlayer> mPlayer;         ///< null without a server
    std::unique_ptr<PlaybackRenderer> mRenderer; ///< null while the filter is suspended
    std::int64_t mPosition = 0;                  ///< where the last renderer stopped
    std::uint64_t mStartedNanos = 0;
    int mAnsweredLatency = -1; ///< that it was started anew for
    std::vector<std::string> mNotes;
    std::set<std::string> mTold;
};

} // namespace vynhost
