#pragma once

#include <cstddef>
#include <string_view>

namespace vyncore::string {

/// The units that count as blank between numbers and words: space, tab, line ends, form feed.
/// [any-thread]
bool IsBlank(char16_t unit);

/// Reads the number that `text` begins with, in base 10 or 16 (a "0x" in front is passed over there; ignored for
/// double). The result is how many units it took, 0 when there is no number or it doesn't fit; `value` is 0 then. For
/// int, unsigned, std::int64_t, std::uint64_t and double. A plus sign is accepted, blanks are not. [any-thread]
template <class T>
std::size_t ReadNumber(std::u16string_view text, T& value, int base);

} // namespace vyncore::string
