#pragma once

#include <memory>

namespace vyncore::allocator {

/// The allocator of every text and vector that crosses the library's border.
template <class T>
using STLAllocator = std::allocator<T>;

} // namespace vyncore::allocator
