#pragma once

#include <algorithm>
#include <string>

namespace vynhost {

/// The text with a blank in the place of every line break and every other control character: texts of plug-ins and of
/// the system may hold any.
/// [any-thread]
inline std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return text;
}

} // namespace vynhost
