#include "vyncore/strings/StringUtils.h"

#include "vyncore/strings/NumberReader.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace vyncore::string {

namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr unsigned kMostDigits = 99;

bool IsLead(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsTrail(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The code point that begins at `index`, which moves to its last unit.
char32_t CodePointAt(std::u16string_view text, std::size_t& index) {
    char16_t const unit = text[index];
    if (IsLead(unit) && index + 1 < text.size() && IsTrail(text[index + 1])) {
        char16_t const trail = text[++index];
        return 0x10000u + ((char32_t{unit} - 0xD800u) << 10) + (char32_t{trail} - 0xDC00u);
    }
    return IsLead(unit) || IsTrail(unit) ? kReplacement : unit;
}

// Most texts are, and take no care.
template <class Unit>
bool IsASCII(std::basic_string_view<Unit> text) {
    unsigned all = 0;
    for (Unit const unit : text)
        all |= static_cast<unsigned>(unit);
    return all < 0x80;
}

UTF8String NarrowASCII(std::u16string_view text) {
    UTF8String narrow(text.size(), '\0');
    std::transform(text.begin(), text.end(), narrow.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    return narrow;
}

template <class T>
bool ReadHead(std::u16string_view text, T& value) {
    std::size_t start = 0;
    while (start < text.size() && IsBlank(text[start]))
        ++start;
    return ReadNumber(text.substr(start), value, 10) != 0;
}

// The longest double has 309 whole digits, and at most 99 follow the point.
struct Digits {
    char buffer[512];

    std::string_view Format(double magnitude, std::chars_format format, unsigned decimals) {
        auto const result = std::to_chars(buffer, std::end(buffer), magnitude, format, static_cast<int>(decimals));
        return {buffer, static_cast<std::size_t>(result.ptr - buffer)};
    }
};

} // namespace

UString AsciiToUTF16(std::string_view ascii) {
    UString text(ascii.size(), kReplacement);
    std::transform(ascii.begin(), ascii.end(), text.begin(), [](char byte) {
        auto const value = static_cast<unsigned char>(byte);
        return value < 0x80 ? char16_t{value} : kReplacement;
    });
    return text;
}

UString UTF8to16(std::string_view utf8) {
    if (IsASCII(utf8))
        return UString(utf8.begin(), utf8.end());
    std::string clean;
    clean.reserve(utf8.size());
    utf8::replace_invalid(utf8.begin(), utf8.end(), std::back_inserter(clean), kReplacement);
    UString text;
    text.reserve(clean.size());
    utf8::utf8to16(clean.begin(), clean.end(), std::back_inserter(text));
    return text;
}

UTF8String UTF16to8(std::u16string_view utf16) {
    if (IsASCII(utf16))
        return NarrowASCII(utf16);
    UTF8String text;
    text.reserve(utf16.size());
    for (std::size_t index = 0; index < utf16.size(); ++index)
        utf8::append(CodePointAt(utf16, index), std::back_inserter(text));
    return text;
}

UString UpperCase(UString const& text, Locale const& locale) {
    UString upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), [&](char16_t unit) { return locale.ToUpper(unit); });
    return upper;
}

bool StringToNumber(std::u16string_view text, int& value) {
    return ReadHead(text, value);
}

bool StringToNumber(std::u16string_view text, unsigned& value) {
    return ReadHead(text, value);
}

bool StringToNumber(std::u16string_view text, std::int64_t& value) {
    return ReadHead(text, value);
}

bool StringToNumber(std::u16string_view text, std::uint64_t& value) {
    return ReadHead(text, value);
}

bool StringToNumber(std::u16string_view text, double& value) {
    return ReadHead(text, value);
}

UString NumberToString(double value, unsigned minWholeDigits, unsigned decimals, unsigned /*flags*/,
                       unsigned maxWholeDigits) {
    if (std::isnan(value))
        return u"nan";
    if (std::isinf(value))
        return value < 0 ? u"-inf" : u"inf";
    decimals = std::min(decimals, kMostDigits);
    minWholeDigits = std::min(minWholeDigits, kMostDigits);

    Digits digits;
    std::string_view number = digits.Format(std::abs(value), std::chars_format::fixed, decimals);
    std::size_t wholeDigits = std::min(number.find('.'), number.size());
    if (wholeDigits > maxWholeDigits) {
        number = digits.Format(std::abs(value), std::chars_format::scientific, decimals);
        wholeDigits = 1;
    }
    bool const showsZero = number.substr(0, number.find('e')).find_first_not_of("0.") == std::string_view::npos;
    UString text(std::signbit(value) && !showsZero ? u"-" : u"");
    if (wholeDigits < minWholeDigits)
        text.append(minWholeDigits - wholeDigits, u'0');
    return text + AsciiToUTF16(number);
}

} // namespace vyncore::string
