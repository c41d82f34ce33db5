#pragma once

#include "vynhost/AudioFileReader.h"
#include "vynhost/LevelMeter.h"
#include "vynhost/SideChainFile.h"

#include "vynmediatypes/AudioChannelLayout.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

struct MidiSong;
struct RenderRequest;

/// What a plug-in hears in a rendering: the input file, or silence where there is none, and the side chain's file. It
/// lasts as long as the input file and the song, whichever is longer. All failures are CommandErrors that name the
/// file.
class RenderSource {
public:
    /// Opens the files.
    /// @param song  what is in the MIDI file that the request names; only its length counts
    /// [main-thread]
    RenderSource(RenderRequest const& request, MidiSong const& song);

    /// Whether there is an input file.
    /// [main-thread]
    bool HasFile() const noexcept { return mFile.has_value(); }

    /// Of the input file; without one that of a file of floating-point samples at the rate that is asked for, with no
    /// channels.
    /// [main-thread]
    AudioFormat const& GetFormat() const noexcept { return mFormat; }

    /// Empty without a side chain.
    /// [main-thread]
    vynmediatypes::AudioChannelLayout GetSideChainLayout() const;

    /// Samples per channel, above 0.
    /// [main-thread]
    std::int64_t GetSampleCount() const noexcept { return mSampleCount; }

    /// Fills channels[channel][sample] with the next samples.
    /// @param mainChannels  those of the input file, or as many silent ones; the side chain's stand behind them
    /// [main-thread]
    void Read(float* const* channels, int mainChannels, int samples);

    /// Levels of the input file.
    /// [main-thread]
    LevelMeter const& GetMeter() const noexcept { return mMeter; }

    /// What a user should know about it.
    /// [main-thread]
    std::vector<std::string> Describe() const;

private:
    void ReadMain(float* const* channels, int mainChannels, int samples);

    std::optional<AudioFileReader> mFile;
    AudioFormat mFormat;
    std::optional<SideChainFile> mSideChain;
    std::int64_t mSampleCount = 0;
    std::int64_t mPosition = 0;
    LevelMeter mMeter;
};

} // namespace vynhost
