#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include <algorithm>
#include <sstream>
#include <string>

namespace vynfuzz {

using namespace vynaudiofilterhost::utility;
using vyncore::proplist::PropList;
using vynmediatypes::AudioBusDescription;
using vynmediatypes::ChannelMap;

namespace {

constexpr int kMostChannels = 4096;

struct Input {
    int channels = 0;
    int targets = 0;
    bool fill = false;
    PropList list;
};

Input ReadInput(std::string const& text) {
    std::istringstream words(text);
    Input input;
    words >> input.channels >> input.targets >> input.fill;
    words.clear();
    input.channels = std::min(input.channels, kMostChannels);
    input.targets = std::clamp(input.targets, 0, kMostChannels);
    std::string kind;
    std::string number;
    int value = 0;
    while (words >> kind >> number >> value)
        input.list.SetValue(kind == "C" ? kind : kind + "_" + number, value);
    return input;
}

} // namespace

void FuzzChannelMap(std::uint8_t const* data, std::size_t size) {
    Input const input = ReadInput(std::string(data, data + size));
    AudioBusDescription const target(u"", vynmediatypes::AudioChannelLayout(static_cast<std::size_t>(input.targets)),
                                     {});
    ChannelMap map;
    LoadChannelMap(&input.list, target, input.channels, input.fill, map);

    Require(map.GetNumberOfChannels() <= std::max(input.channels, 0), "no entry beyond the filter's channels");
    for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry) {
        Require(map[entry] >= -1 && map[entry] < input.targets, "no connection beyond the target");
        Require(map.GetChannelLayout(entry).size() == (map[entry] >= 0 ? 1u : 0u), "the layout tells a connection");
    }
    PropList saved;
    ChannelMap again;
    Require(SaveChannelMap(map, &saved) && LoadChannelMap(&saved, target, input.channels, false, again) &&
                again.IsMappingEqual(map),
            "what was read survives saving and loading");
}

} // namespace vynfuzz
