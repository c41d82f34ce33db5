#pragma once

#include "vynaccelerate/Buffers.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace vynhost {

/// Audio of several channels, each in an aligned buffer of its own. Sized once; the object owns the samples.
/// Even without channels GetPointers gives an array of one buffer, for plug-ins that look at it all the same.
class ChannelBuffers {
public:
    /// All samples 0. Throws std::bad_alloc when there is no memory.
    /// [any-thread]
    ChannelBuffers(int channels, int samplesPerChannel);

    /// [any-thread]
    int GetChannelCount() const noexcept { return mChannelCount; }

    /// pointers[channel][sample]. Valid as long as the object.
    /// [any-thread]
    float** GetPointers() noexcept { return mPointers.data(); }

    /// The first `count` samples of a channel.
    /// [any-thread]
    std::span<float> GetChannel(int channel, int count) noexcept {
        return {mPointers[static_cast<std::size_t>(channel)], static_cast<std::size_t>(count)};
    }

private:
    struct Release {
        void operator()(float* buffer) const noexcept { vynaccelerate::utility::Free(buffer); }
    };

    int mChannelCount;
    std::vector<std::unique_ptr<float, Release>> mBuffers;
    std::vector<float*> mPointers;
};

} // namespace vynhost
