#pragma once

#include "vyncore/allocator/STLAllocator.h"

#include <string>

namespace vyncore {

/// Text in UTF-16, as everything above the system's border holds it.
using UString = std::basic_string<char16_t, std::char_traits<char16_t>, allocator::STLAllocator<char16_t>>;

/// Text in UTF-8: property-list keys, JSON and stored files.
using UTF8String = std::basic_string<char, std::char_traits<char>, allocator::STLAllocator<char>>;

} // namespace vyncore
