#pragma once

#include "vynhost/ChannelChoice.h"
#include "vynhost/ChannelFit.h"
#include "vynhost/MainBuses.h"
#include "vynhost/TrackBasis.h"

#include "vynmediatypes/AudioChannelLayout.h"
#include "vynmediatypes/ChannelMap.h"

#include <string>
#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

namespace vynhost {

/// What a track is to be made of. A plain record.
struct TrackRequest {
    vynmediatypes::AudioChannelLayout file;           ///< of the source, at least one channel
    vynmediatypes::AudioChannelLayout layout = {};    ///< of the track; empty: as file and plug-in have it
    vynmediatypes::AudioChannelLayout sideChain = {}; ///< empty without a side chain
    ChannelChoice choice = {};                        ///< what isn't chosen connects by best fit
    TrackBasis basis = TrackBasis::kFile;             ///< without a layout, a side chain and a choice, if another one
};

/// The track that a filter sits on: so many main channels, which are heard in the end, with side-chain channels behind
/// them on the way in. It asks the filter for buses, tells it the track, and connects the two. The filter belongs to
/// the caller and must outlive it.
///
/// Unless its layout is asked for, the track has the file's channels; only when the filter's main output has more of
/// them it is as wide as that. Channels that the filter isn't connected with go around it.
class Track {
public:
    /// Throws CommandError (wrong usage) when the choice doesn't fit the filter, and std::runtime_error when the filter
    /// gives no audio, takes no side chain and there is one, or keeps maps that lead past the track.
    /// [main-thread & suspended]
    Track(vynaudiofilterhost::AudioFilter& filter, TrackRequest const& request);

    /// [main-thread]
    int GetChannels() const noexcept { return static_cast<int>(mIsRead.size()) - mSideChainChannels; }
    /// [main-thread]
    int GetFileChannels() const noexcept { return mFileChannels; }
    /// [main-thread]
    int GetSideChainChannels() const noexcept { return mSideChainChannels; }

    /// How the channels of the file become the main channels.
    /// [main-thread]
    ChannelFit GetFit() const noexcept { return {mFileChannels, GetChannels()}; }

    /// Whether the filter takes this channel of the track, side-chain channels counted on behind the main ones.
    /// [main-thread]
    bool IsRead(int channel) const { return mIsRead[static_cast<std::size_t>(channel)]; }
    /// Whether the filter gives this main channel.
    /// [main-thread]
    bool IsFed(int channel) const { return mIsFed[static_cast<std::size_t>(channel)]; }
    /// Whether this main channel goes around the filter.
    /// [main-thread]
    bool GoesAround(int channel) const { return !IsRead(channel) && !IsFed(channel); }
    /// Whether any does.
    /// [main-thread]
    bool HasChannelsAround() const;

    /// What a user should know about it.
    /// [main-thread]
    std::vector<std::string> Describe() const;

private:
    using Layout = vynmediatypes::AudioChannelLayout;

    void ChooseLayout(TrackRequest const& request);
    void Connect(TrackRequest const& request);
    void CheckMaps() const;
    vynmediatypes::ChannelMap FitInputs() const;
    vynmediatypes::ChannelMap FitOutputs() const;
    void ConnectSideChain();
    void ReadConnections();
    bool IsUsed(int fileChannel) const;
    std::string DescribeFit() const;
    template <class Matches>
    std::vector<int> FindChannels(int from, int to, Matches const& matches) const;

    vynaudiofilterhost::AudioFilter& mFilter;
    int const mFileChannels;
    int const mSideChainChannels;
    bool const mLayoutIsAsked;
    BusSpan mMainInput;
    BusSpan mMainOutput;
    Layout mLayout;
    std::vector<bool> mIsRead; ///< by channel of the track, main ones first
    std::vector<bool> mIsFed;  ///< by main channel
};

} // namespace vynhost
