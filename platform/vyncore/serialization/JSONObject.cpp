#include "vyncore/serialization/JSONObject.h"

#include "vyncore/serialization/JSONLevels.h"

namespace vyncore::serialization {

void JSONObject::Set(UTF8String const& key, boost::any value) {
    std::size_t const levels = LevelsWith(mLevels, value);
    if (auto const place = mPlaces.find(key); place != mPlaces.end()) {
        mMembers[place->second].second = std::move(value);
    } else {
        mMembers.emplace_back(key, std::move(value));
        mPlaces.emplace(key, mMembers.size() - 1);
    }
    mLevels = levels;
}

boost::any const* JSONObject::Find(UTF8String const& key) const {
    auto const place = mPlaces.find(key);
    return place == mPlaces.end() ? nullptr : &mMembers[place->second].second;
}

} // namespace vyncore::serialization
