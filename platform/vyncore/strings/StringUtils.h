#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/Locale.h"
#include "vyncore/strings/UString.h"

#include <cstdint>
#include <string_view>

/// Conversions between texts, and between texts and numbers. Malformed input gives U+FFFD for what can't be read, never
/// an error; numbers read and write the same under every locale.
namespace vyncore::string {

/// A byte becomes a unit; a byte above 127, which isn't ASCII, becomes U+FFFD.
/// [any-thread]
VYN_API UString AsciiToUTF16(std::string_view ascii);

/// [any-thread]
VYN_API UString UTF8to16(std::string_view utf8);

/// A half of a surrogate pair on its own becomes U+FFFD.
/// [any-thread]
VYN_API UTF8String UTF16to8(std::u16string_view utf16);

/// Letter by letter: the length never changes.
/// [any-thread]
VYN_API UString UpperCase(UString const& text, Locale const& locale = Locale::Default());

/// Reads the number at the head of `text`; blanks before it and anything behind it are passed over.
/// False when there is none or it doesn't fit, and `value` is 0 then. An unsigned number has no minus sign.
/// A double too small to hold reads as 0, which is no failure; "inf" and "nan" are no numbers.
/// [any-thread]
VYN_API bool StringToNumber(std::u16string_view text, int& value);
VYN_API bool StringToNumber(std::u16string_view text, unsigned& value);
VYN_API bool StringToNumber(std::u16string_view text, std::int64_t& value);
VYN_API bool StringToNumber(std::u16string_view text, std::uint64_t& value);
VYN_API bool StringToNumber(std::u16string_view text, double& value);

/// Writes `value` with exactly `decimals` digits behind the point and zeros in front up to `minWholeDigits`; both
/// counts end at 99. There is no "-0". A number with more than `maxWholeDigits` whole digits takes the form "1.50e+40".
/// What is no number gives "nan", what is beyond all numbers "inf" or "-inf". No flags are defined; pass 0.
/// [any-thread]
VYN_API UString NumberToString(double value, unsigned minWholeDigits, unsigned decimals, unsigned flags = 0,
                               unsigned maxWholeDigits = 31);

} // namespace vyncore::string
