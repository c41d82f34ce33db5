#include "vynhost/ChannelFit.h"

#include <algorithm>

namespace vynhost {

std::string CountText(int channels) {
    return channels == 1 ? "one channel" : std::to_string(channels) + " channels";
}

void ChannelFit::Apply(float* const* from, float* const* to, int samples) const noexcept {
    for (int target = 0; target < mTo; ++target) {
        std::copy_n(from[target % mFrom], samples, to[target]);
        int added = 1;
        for (int source = target + mTo; source < mFrom; source += mTo, ++added) {
            for (int i = 0; i < samples; ++i)
                to[target][i] += from[source][i];
        }
        if (added > 1) {
            float const scale = 1.0f / static_cast<float>(added);
            std::for_each_n(to[target], samples, [scale](float& sample) { sample *= scale; });
        }
    }
}

std::string ChannelFit::Describe(std::string const& reason) const {
    if (mFrom == mTo)
        return {};
    std::string const file = ChannelCountName(mFrom) + " file ";
    std::string const taken = ": " + reason + " " + CountText(mTo);
    if (mTo == 1)
        return file + "mixed to mono" + taken;
    if (mFrom > mTo)
        return file + "mixed to " + CountText(mTo) + taken;
    if (mFrom == 1)
        return file + (mTo == 2 ? "fed to both channels" : "fed to every channel") + taken;
    return file + "repeated over " + CountText(mTo) + taken;
}

std::string ChannelCountName(int channels) {
    switch (channels) {
    case 1:
        return "mono";
    case 2:
        return "stereo";
    default:
        return std::to_string(channels) + "-channel";
    }
}

} // namespace vynhost
