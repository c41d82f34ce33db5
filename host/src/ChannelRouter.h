#pragma once

#include "vynaudiofilterhost/DelayLine.h"
#include "vyncore/Export.h"
#include "vyncore/utility/Flags.h"
#include "vynmediatypes/ChannelMap.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vynaudiofilterhost {

/// One bit per channel, bit n for channel n; a set bit says that the channel holds silence. Channels 64 apart share a
/// bit.
using ChannelFlags = vyncore::utility::Flags<std::uint64_t>;

/// Puts the buffers of a track under the channels of a filter, block by block. A filter owns one.
///
/// Direct, filter channel n is target channel n, and channels that are declared silent read silence. Mapped, a list of
/// target channels stands for each side: what has no source reads silence, what has no destination writes into a buffer
/// that nobody reads, and the main target channels that the filter has nothing to do with go around it, as late as
/// the filter is.
///
/// Thread safety: everything is sized on the main thread while nothing renders. From then on the main thread changes
/// nothing but the elements of the lists (Update), each written whole, while the process thread reads them; neither
/// waits for the other. A block uses one reading of each element, so that its buffers and its flags agree.
class VYN_API ChannelRouter {
public:
    /// What is sized for use with maps.
    struct Shape {
        int inputChannels = 0;     ///< of the filter, all buses together
        int outputChannels = 0;    ///< likewise
        int mainChannels = 0;      ///< of the track
        bool passesAround = false; ///< whether channels go around the filter at all
        int blockSize = 0;         ///< the largest block, in samples
        int delay = 0;             ///< of the channels that go around, in samples
    };

    /// Sizes everything for direct use.
    /// [main-thread & suspended]
    void SizeDirect(int inputChannels, int blockSize);

    /// Sizes everything for use with maps, without any connection; Update makes them.
    /// [main-thread & suspended]
    void SizeMapped(Shape const& shape);

    /// Takes the connections of two maps over; those that lead past the target are dropped. Does nothing in direct use.
    /// The process thread may be inside a block: it sees each connection as it was or as it is.
    /// @param mainChannels, sideChainChannels  of the target now. The buffers of a block are laid out for as many main
    ///     channels as everything was sized for; ones that have come since are left out.
    /// [main-thread]
    void Update(vynmediatypes::ChannelMap const& inputMap, vynmediatypes::ChannelMap const& outputMap, int mainChannels,
                int sideChainChannels);

    /// Whether the buffers are large enough for a block of so many samples.
    /// [process-thread]
    bool Fits(int numSamples) const noexcept {
        return (!mMapped && mMappedInputs.empty()) || static_cast<std::size_t>(numSamples) <= mSilence.size();
    }

    /// Puts the buffers and the flags of a filter's channels in place of those of the target's. Arguments as for
    /// AudioFilter::ProcessWithMapping.
    /// [process-thread]
    void Map(float**& in, float**& out, ChannelFlags& inFlags) noexcept {
        if (mMapped)
            MapByList(in, out, inFlags);
        else
            MapDirect(in, inFlags);
    }

    /// Finishes the block that was mapped last: sends the channels around the filter on, and gives the flags of the
    /// target channels for those of the filter's.
    /// [process-thread]
    ChannelFlags FinishOutputs(float** in, float** out, int numSamples, ChannelFlags inFlags,
                               ChannelFlags filterFlags) noexcept {
        return mMapped ? FinishOutputsByList(in, out, numSamples, inFlags, filterFlags) : filterFlags;
    }

private:
    void MapDirect(float**& in, ChannelFlags& inFlags) noexcept;
    void MapByList(float**& in, float**& out, ChannelFlags& inFlags) noexcept;
    ChannelFlags FinishOutputsByList(float** in, float** out, int numSamples, ChannelFlags inFlags,
                                     ChannelFlags filterFlags) noexcept;
    ChannelFlags PassAround(float** in, float** out, unsigned samples, ChannelFlags inFlags,
                            ChannelFlags flags) noexcept;
    float** HideSilentChannels(float** in, ChannelFlags inFlags) noexcept;

    bool mMapped = false;
    boost::intrusive_ptr<DelayLine> mDelayLine; ///< null when no channel can go around
    std::vector<int> mInputIndices;  ///< for each input channel of the filter the target channel that feeds it, or -1
    std::vector<int> mOutputIndices; ///< for each output channel of the filter the target channel that it feeds, or -1
    std::vector<int> mPassThrough;   ///< for each main target channel its own number when it goes around, or -1
    std::vector<int> mBlockOutputs;  ///< the output indices of the block in work
    std::vector<float*> mMainInputs; ///< of the block in work, silence where a channel is declared silent
    std::vector<float*> mMappedInputs;
    std::vector<float*> mMappedOutputs;
    std::vector<float> mSilence; ///< for the filter's inputs
    std::vector<float>
        mSilenceAround; ///< for the channels around it, which a filter that writes its inputs can't spoil
    std::vector<float> mScratch;
};

inline void ChannelRouter::MapDirect(float**& in, ChannelFlags& inFlags) noexcept {
    std::size_t const count = mMappedInputs.size();
    float** const source = in;
    float** const mapped = in = mMappedInputs.data();
    if (inFlags.GetBits() == 0) {
        for (std::size_t channel = 0; channel < count; ++channel)
            mapped[channel] = source[channel];
        inFlags = ChannelFlags(count < 64 ? ~std::uint64_t{0} << count : 0);
        return;
    }
    ChannelFlags flags;
    flags.SetAll();
    for (unsigned channel = 0; channel < count; ++channel) {
        bool const silent = inFlags.Test(channel);
        mapped[channel] = silent ? mSilence.data() : source[channel];
        if (!silent)
            flags.Clear(channel);
    }
    inFlags = flags;
}

} // namespace vynaudiofilterhost
