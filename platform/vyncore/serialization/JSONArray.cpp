#include "vyncore/serialization/JSONArray.h"

#include "vyncore/serialization/JSONLevels.h"

#include <utility>

namespace vyncore::serialization {

void JSONArray::Append(boost::any value) {
    std::size_t const levels = LevelsWith(mLevels, value);
    mElements.push_back(std::move(value));
    mLevels = levels;
}

} // namespace vyncore::serialization
