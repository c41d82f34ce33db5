#pragma once

#include <boost/any.hpp>

#include <cstddef>

namespace vyncore::serialization {

/// The levels of an array or object of `levels` levels once `added` is in it. Throws std::length_error when those are
/// more than kMostJSONLevels.
/// [any-thread]
std::size_t LevelsWith(std::size_t levels, boost::any const& added);

} // namespace vyncore::serialization
