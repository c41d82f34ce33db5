#include "vynhost/OneLine.h"

#include <string_view>

namespace vynhost {

namespace {

// In bytes; 0 when none begins here. Beyond ASCII those are U+0080 to U+009F, and the separators U+2028 and U+2029.
std::size_t MeasureControl(std::string_view text) {
    unsigned char const first = static_cast<unsigned char>(text.front());
    if (first < 0x20 || first == 0x7F)
        return 1;
    if (first == 0xC2 && text.size() > 1 && (static_cast<unsigned char>(text[1]) & 0xE0) == 0x80)
        return 2;
    return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

} // namespace

std::string OnOneLine(std::string text) {
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (std::size_t const bytes = MeasureControl(std::string_view(text).substr(place)); bytes > 0)
            text.replace(place, bytes, bytes, ' ');
    }
    return text;
}

} // namespace vynhost
