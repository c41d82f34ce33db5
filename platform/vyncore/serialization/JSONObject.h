#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <boost/any.hpp>

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace vyncore::serialization {

/// A JSON object: members under keys that differ, in the order in which they came. A plain value, owned by the
/// boost::any that holds it; a copy is deep. Its members can be read and set, never changed from within, so that it is
/// never nested deeper than kMostJSONLevels.
class VYN_API JSONObject {
public:
    using Member = std::pair<UTF8String, boost::any>;
    using Members = std::vector<Member, allocator::STLAllocator<Member>>;

    /// Makes `value` the member `key`, in the place of the one that is there, else behind the others. Throws
    /// std::length_error, and stays as it was, when the object would be nested too deep by that.
    /// [any-thread]
    void Set(UTF8String const& key, boost::any value);

    /// The member's value; null when absent. Valid until the object changes.
    /// [any-thread]
    boost::any const* Find(UTF8String const& key) const;

    /// [any-thread]
    std::size_t size() const noexcept { return mMembers.size(); }
    bool empty() const noexcept { return mMembers.empty(); }
    Members::const_iterator begin() const noexcept { return mMembers.begin(); }
    Members::const_iterator end() const noexcept { return mMembers.end(); }

    /// The number of levels from here down, this one included: 1 when no array and no object is in it. A member that
    /// was replaced still counts.
    /// [any-thread]
    std::size_t GetLevels() const noexcept { return mLevels; }

private:
    Members mMembers;
    std::map<UTF8String, std::size_t> mPlaces; ///< of each key among the members
    std::size_t mLevels = 1;
};

} // namespace vyncore::serialization
