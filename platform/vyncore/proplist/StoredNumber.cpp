#include "vyncore/proplist/StoredNumber.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vyncore::proplist {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kOtherNaN = "nan:";
constexpr std::uint32_t kPlainNaN = 0x7FC00000;

// The word that `text` begins with behind blanks, which is taken away; empty when there is none.
std::string_view TakeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    std::string_view const word = text.substr(0, text.find_first_of(kBlanks));
    text.remove_prefix(word.size());
    return word;
}

// Empty, which is no number, when there are several words.
std::string_view OnlyWord(std::string_view text) {
    std::string_view const word = TakeWord(text);
    return TakeWord(text).empty() ? word : std::string_view{};
}

template <class T, class... How>
bool ReadWhole(std::string_view word, T& value, How... how) {
    char const* const end = word.data() + word.size();
    auto const [read, error] = std::from_chars(word.data(), end, value, how...);
    return error == std::errc{} && read == end;
}

template <class T, class... How>
UTF8String Print(T value, How... how) {
    std::array<char, 64> buffer;
    auto const [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, how...);
    return {buffer.data(), end};
}

bool RestoreNaN(std::string_view word, float& value) {
    std::uint32_t bits = kPlainNaN;
    if (word != "nan" && !(word.starts_with(kOtherNaN) && word.size() == kOtherNaN.size() + 8 &&
                           ReadWhole(word.substr(kOtherNaN.size()), bits, 16)))
        return false;
    value = std::bit_cast<float>(bits);
    return std::isnan(value);
}

bool RestoreFloat(std::string_view word, float& value) {
    if (word.starts_with("nan"))
        return RestoreNaN(word, value);
    value = std::numeric_limits<float>::infinity();
    if (word == "inf")
        return true;
    value = -value;
    // The conversion knows more spellings of what is no number.
    std::size_t const firstDigit = word.starts_with('-') ? 1 : 0;
    bool const isNumber = std::string_view("0123456789.").find(word.substr(firstDigit, 1)) != word.npos;
    return word == "-inf" || (isNumber && ReadWhole(word, value));
}

} // namespace

UTF8String StoreNumber(int value) {
    return Print(value);
}

UTF8String StoreNumber(unsigned value) {
    return Print(value);
}

UTF8String StoreNumber(bool value) {
    return value ? "true" : "false";
}

UTF8String StoreNumber(float value) {
    auto const bits = std::bit_cast<std::uint32_t>(value);
    if (!std::isnan(value))
        return Print(value);
    return bits == kPlainNaN ? UTF8String("nan") : UTF8String(kOtherNaN) + Print(bits, 16);
}

UTF8String StoreNumber(std::list<float> const& values) {
    UTF8String text;
    for (float const value : values) {
        if (!text.empty())
            text += ' ';
        text += StoreNumber(value);
    }
    return text;
}

bool RestoreNumber(std::string_view text, int& value) {
    return ReadWhole(OnlyWord(text), value);
}

bool RestoreNumber(std::string_view text, unsigned& value) {
    return ReadWhole(OnlyWord(text), value);
}

bool RestoreNumber(std::string_view text, bool& value) {
    std::string_view const word = OnlyWord(text);
    value = word == "true";
    return value || word == "false";
}

bool RestoreNumber(std::string_view text, float& value) {
    return RestoreFloat(OnlyWord(text), value);
}

bool RestoreNumber(std::string_view text, std::list<float>& values) {
    values.clear();
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        if (!RestoreFloat(word, values.emplace_back()))
            return false;
    }
    return true;
}

} // namespace vyncore::proplist
