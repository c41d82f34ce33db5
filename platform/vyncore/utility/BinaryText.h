#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <cstdint>
#include <vector>

/// Bytes as a text that a property list can hold: base64 (RFC 4648) with its padding and without line ends.
namespace vyncore::utility {

/// Makes `text` what stands for `size` bytes: none for none. False when `data` is null and `size` isn't 0, or when the
/// text would be longer than one can be; `text` is empty then.
/// [any-thread]
VYN_API bool EncodeBinaryDataToUTF8String(unsigned char const* data, std::uint64_t size, UTF8String& text);

/// The inverse: replaces what `data` held. Blanks, tabs and line ends are passed over wherever they stand. False when
/// another character isn't one of base64, the padding is missing or stands elsewhere than at the end, or the bits that
/// it leaves over aren't 0, so that one text alone, but for its blanks, gives the same bytes; `data` is empty then.
/// [any-thread]
VYN_API bool DecodeBinaryDataFromUTF8String(UTF8String const& text,
                                            std::vector<unsigned char, allocator::STLAllocator<unsigned char>>& data);

} // namespace vyncore::utility
