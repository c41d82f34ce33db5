#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <cstddef>

namespace vynaudiofilterhost::utility {

int CountChannels(std::vector<vynmediatypes::AudioBusDescription> const& buses) {
    std::size_t count = 0;
    for (auto const& bus : buses)
        count += static_cast<std::size_t>(bus.GetChannelCount());
    return static_cast<int>(count);
}

} // namespace vynaudiofilterhost::utility
