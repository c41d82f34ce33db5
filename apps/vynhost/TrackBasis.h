#pragma once

namespace vynhost {

/// What a track takes over from a filter that somebody has set up already.
enum class TrackBasis {
    kFile,  ///< nothing: the filter is asked for buses as the file has them
    kBuses, ///< its buses; they are connected by best fit
    kMaps,  ///< its buses and its channel maps
};

} // namespace vynhost
