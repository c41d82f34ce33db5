#include "vyncore/serialization/JSONLevels.h"

#include "vyncore/serialization/JSON.h"

#include <algorithm>
#include <stdexcept>

namespace vyncore::serialization {

namespace {

std::size_t LevelsOf(boost::any const& value) {
    if (auto const* const array = boost::any_cast<JSONArray>(&value))
        return array->GetLevels();
    auto const* const object = boost::any_cast<JSONObject>(&value);
    return object ? object->GetLevels() : 0;
}

} // namespace

std::size_t LevelsWith(std::size_t levels, boost::any const& added) {
    std::size_t const needed = LevelsOf(added) + 1;
    if (needed > kMostJSONLevels)
        throw std::length_error("a JSON value would be nested too deep");
    return std::max(levels, needed);
}

} // namespace vyncore::serialization
