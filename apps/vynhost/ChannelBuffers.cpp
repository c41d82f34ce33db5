#include "vynhost/ChannelBuffers.h"

#include <algorithm>
#include <new>

namespace vynhost {

ChannelBuffers::ChannelBuffers(int channels, int samplesPerChannel) : mChannelCount(channels) {
    auto const count = static_cast<std::size_t>(samplesPerChannel);
    for (int channel = 0; channel < std::max(channels, 1); ++channel) {
        mBuffers.emplace_back(vynaccelerate::utility::Malloc_Float(count));
        mPointers.push_back(mBuffers.back().get());
        if (!mPointers.back())
            throw std::bad_alloc();
        vynaccelerate::utility::Zero(count, mPointers.back());
    }
}

} // namespace vynhost
