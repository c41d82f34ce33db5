#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace vynhost {

/// Which channel of the track each channel of a plug-in is connected with, as a user chose it: by channel of the
/// plug-in, all its buses in order, the number of a target channel, or -1 for none. A plain record; a half that was
/// not chosen is empty.
struct ChannelChoice {
    std::optional<std::vector<int>> inputs = {};
    std::optional<std::vector<int>> outputs = {};
};

/// Reads "in:0,1,-/out:0,1", of which one half may be missing; "-" is no connection. Throws CommandError (wrong usage)
/// for a text that is none, and when two outputs lead to one target.
/// [any-thread]
ChannelChoice ParseChannelChoice(std::string_view text);

} // namespace vynhost
