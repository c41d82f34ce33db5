#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"

#include <boost/any.hpp>

#include <cstddef>
#include <vector>

namespace vyncore::serialization {

/// A JSON array: its elements in order. A plain value, owned by the boost::any that holds it; a copy is deep. What is
/// in it can be read and added to, never replaced, so that it is never nested deeper than kMostJSONLevels.
class VYN_API JSONArray {
public:
    using Elements = std::vector<boost::any, allocator::STLAllocator<boost::any>>;

    /// Takes `value` in behind the others. Throws std::length_error, and stays as it was, when the array would be
    /// nested too deep by that.
    /// [any-thread]
    void Append(boost::any value);

    /// [any-thread]
    std::size_t size() const noexcept { return mElements.size(); }
    bool empty() const noexcept { return mElements.empty(); }
    Elements::const_iterator begin() const noexcept { return mElements.begin(); }
    Elements::const_iterator end() const noexcept { return mElements.end(); }

    /// The element `index`, which must be there.
    /// [any-thread]
    boost::any const& operator[](std::size_t index) const { return mElements[index]; }

    /// The number of levels from here down, this one included: 1 when no array and no object is in it.
    /// [any-thread]
    std::size_t GetLevels() const noexcept { return mLevels; }

private:
    Elements mElements;
    std::size_t mLevels = 1;
};

} // namespace vyncore::serialization
