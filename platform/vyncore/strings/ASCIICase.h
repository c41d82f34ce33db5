#pragma once

#include "vyncore/strings/UString.h"

#include <algorithm>
#include <string_view>

/// Letter case where only A to Z have one, whatever the locale: names of files as formats and systems compare them.
namespace vyncore::string {

/// [any-thread]
constexpr char16_t LowerASCII(char16_t unit) noexcept {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

/// [any-thread]
inline bool EqualsInASCIICase(std::u16string_view left, std::u16string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t one, char16_t other) { return LowerASCII(one) == LowerASCII(other); });
}

} // namespace vyncore::string
