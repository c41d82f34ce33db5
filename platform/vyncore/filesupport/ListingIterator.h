#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace vyncore::filesupport {

/// Walks a listing that was taken once, when the walk began: what changes on the disk meanwhile changes nothing here.
/// The default one is the end of every walk. A copy walks on by itself.
template <class T>
class ListingIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = T const*;
    using reference = T const&;

    /// [any-thread]
    ListingIterator() = default;
    explicit ListingIterator(std::vector<T> listing)
        : mListing(std::make_shared<std::vector<T> const>(std::move(listing))) {}

    /// Not for the end.
    /// [any-thread]
    reference operator*() const { return (*mListing)[mIndex]; }
    pointer operator->() const { return &**this; }

    /// [any-thread]
    ListingIterator& operator++() {
        ++mIndex;
        return *this;
    }
    ListingIterator operator++(int) {
        ListingIterator before = *this;
        ++mIndex;
        return before;
    }

    /// Two ends are equal; otherwise it is one listing at one place.
    /// [any-thread]
    friend bool operator==(ListingIterator const& left, ListingIterator const& right) {
        if (left.AtEnd() || right.AtEnd())
            return left.AtEnd() && right.AtEnd();
        return left.mListing == right.mListing && left.mIndex == right.mIndex;
    }

private:
    bool AtEnd() const { return !mListing || mIndex >= mListing->size(); }

    std::shared_ptr<std::vector<T> const> mListing;
    std::size_t mIndex = 0;
};

} // namespace vyncore::filesupport
