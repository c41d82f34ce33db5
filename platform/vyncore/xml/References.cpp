#include "vyncore/xml/References.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>

namespace vyncore::xml {

namespace {

struct NamedCharacter {
    std::string_view name;
    char character;
};

constexpr NamedCharacter kNames[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

bool AppendNumbered(std::string_view digits, UTF8String& text) {
    int const base = digits.starts_with('x') ? 16 : 10;
    if (base == 16)
        digits.remove_prefix(1);
    std::uint32_t code = 0;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, base);
    if (error != std::errc{} || end != digits.data() + digits.size() || !IsXMLCharacter(code))
        return false;
    utf8::append(code, std::back_inserter(text));
    return true;
}

bool AppendReferred(std::string_view name, UTF8String& text) {
    if (name.starts_with('#'))
        return AppendNumbered(name.substr(1), text);
    auto const* const found =
        std::find_if(std::begin(kNames), std::end(kNames), [name](auto const& named) { return named.name == name; });
    if (found == std::end(kNames))
        return false;
    text += found->character;
    return true;
}

} // namespace

bool IsXMLCharacter(char32_t code) noexcept {
    bool const isControl = code < 0x20 && code != U'\t' && code != U'\n' && code != U'\r';
    bool const isHalfPair = code >= 0xD800 && code <= 0xDFFF;
    return !isControl && !isHalfPair && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

bool IsXMLText(std::string_view utf8) noexcept {
    unsigned forbidden = 0;
    unsigned all = 0;
    // Without a branch, so that the compiler takes many at a time.
    for (char const unit : utf8) {
        auto const code = static_cast<unsigned char>(unit);
        forbidden |= static_cast<unsigned>(code < 0x20 && code != '\t' && code != '\n' && code != '\r');
        all |= code;
    }
    if (forbidden != 0 || all < 0x80)
        return forbidden == 0;
    return utf8::is_valid(utf8.begin(), utf8.end()) && utf8.find("\xEF\xBF\xBE") == utf8.npos &&
           utf8.find("\xEF\xBF\xBF") == utf8.npos;
}

bool ResolveReferences(std::string_view raw, UTF8String& text) {
    text.clear();
    for (std::size_t at = raw.find('&'); at != raw.npos; at = raw.find('&')) {
        constexpr std::size_t kLongest = 16;
        std::size_t const length = raw.substr(at, kLongest).find(';');
        text += raw.substr(0, at);
        if (length == raw.npos || !AppendReferred(raw.substr(at + 1, length - 1), text))
            return false;
        raw.remove_prefix(at + length + 1);
    }
    text += raw;
    return true;
}

} // namespace vyncore::xml
