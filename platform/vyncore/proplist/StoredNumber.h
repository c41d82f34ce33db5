#pragma once

#include "vyncore/strings/UString.h"

#include <list>
#include <string_view>

namespace vyncore::proplist {

/// Numbers and truth values as a stored property list holds them: decimal, "true" and "false". A float has as many
/// digits as it takes to read the same one back; there are "inf", "-inf", "nan" and, for each other value that is no
/// number, "nan:" and its eight hexadecimal digits. A list of floats has blanks between them.
/// [any-thread]
UTF8String StoreNumber(int value);
UTF8String StoreNumber(unsigned value);
UTF8String StoreNumber(bool value);
UTF8String StoreNumber(float value);
UTF8String StoreNumber(std::list<float> const& values);

/// The inverse, to the bit; blanks around it are passed over. False for anything else and for a number that doesn't
/// fit; `value` says nothing then.
/// [any-thread]
bool RestoreNumber(std::string_view text, int& value);
bool RestoreNumber(std::string_view text, unsigned& value);
bool RestoreNumber(std::string_view text, bool& value);
bool RestoreNumber(std::string_view text, float& value);
bool RestoreNumber(std::string_view text, std::list<float>& values);

} // namespace vyncore::proplist
