#pragma once

#include "vynaudiofilterhost/VST3/src/ParameterPoint.h"

#include <cstddef>
#include <memory>

namespace vynaudiofilterhost::vst3 {

/// The allocator of one queue's vector of points: its first reservation comes out of a slice of memory that the queue
/// keeps, everything larger from the heap. Without a slice it is the heap's allocator.
///
/// It counts on how the queue uses its vector: one reservation of kParameterPointCapacity when it is made, growth
/// after that, never a smaller one.
template <class Point>
class ParameterPointAllocator {
public:
    using value_type = Point;

    ParameterPointAllocator() noexcept = default;

    /// `slice` begins kParameterPointCapacity points of uninitialised memory, or is null.
    /// [any-thread]
    explicit ParameterPointAllocator(Point* slice) noexcept : mSlice(slice) {}

    template <class Other>
    explicit ParameterPointAllocator(ParameterPointAllocator<Other> const&) noexcept {}

    /// Memory for `count` points, in place while they fit into the slice. Throws std::bad_alloc.
    /// [any-thread]
    Point* allocate(std::size_t count) {
        if (mSlice && count <= kParameterPointCapacity)
            return mSlice;
        return std::allocator<Point>().allocate(count);
    }

    /// [any-thread]
    void deallocate(Point* points, std::size_t count) noexcept {
        if (points != mSlice)
            std::allocator<Point>().deallocate(points, count);
    }

    /// A copied vector gets memory of its own: a slice has one user.
    /// [any-thread]
    ParameterPointAllocator select_on_container_copy_construction() const noexcept { return {}; }

    friend bool operator==(ParameterPointAllocator const& left, ParameterPointAllocator const& right) noexcept {
        return left.mSlice == right.mSlice;
    }

private:
    Point* mSlice = nullptr;
};

} // namespace vynaudiofilterhost::vst3
