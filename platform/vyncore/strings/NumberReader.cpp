#include "vyncore/strings/NumberReader.h"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>
#include <type_traits>

namespace vyncore::string {

namespace {

bool MayBelongToNumber(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           unit == u'+' || unit == u'-' || unit == u'.';
}

// No number needs more units than that, and who reads many in one text should not pay for all of it each time.
constexpr std::size_t kMostUnits = 4096;

std::string NumberHead(std::u16string_view text) {
    std::string head;
    for (char16_t const unit : text.substr(0, kMostUnits)) {
        if (!MayBelongToNumber(unit))
            break;
        head += static_cast<char>(unit);
    }
    return head;
}

void DropHexPrefix(std::string& head) {
    std::size_t const start = head.starts_with('-') ? 1 : 0;
    std::string_view const prefix = std::string_view(head).substr(start, 2);
    if (prefix == "0x" || prefix == "0X")
        head.erase(start, 2);
}

// The conversion doesn't tell too small from too large; a stream does, and gives the nearest number, which may be 0.
bool ReadExtreme(std::string const& number, double& value) {
    std::istringstream stream(number);
    stream.imbue(std::locale::classic());
    stream >> value;
    if (!stream)
        value = 0;
    return static_cast<bool>(stream);
}

std::from_chars_result ConvertReal(std::string const& head, double& value) {
    char const* const begin = head.data();
    // "inf" and "nan" are words here.
    std::size_t const first = head.starts_with('-') ? 1 : 0;
    if (first == head.size() || std::isalpha(static_cast<unsigned char>(head[first])))
        return {begin, std::errc::invalid_argument};
    std::from_chars_result result = std::from_chars(begin, begin + head.size(), value);
    if (result.ec == std::errc::result_out_of_range && ReadExtreme(std::string(begin, result.ptr), value))
        result.ec = {};
    return result;
}

template <class T>
std::from_chars_result Convert(std::string const& head, T& value, [[maybe_unused]] int base) {
    char const* const end = head.data() + head.size();
    if constexpr (std::is_floating_point_v<T>)
        return ConvertReal(head, value);
    else
        return std::from_chars(head.data(), end, value, base);
}

} // namespace

bool IsBlank(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

template <class T>
std::size_t ReadNumber(std::u16string_view text, T& value, int base) {
    value = T{};
    std::string head = NumberHead(text);
    std::size_t const length = head.size();
    if (head.starts_with('+'))
        head.erase(0, head.starts_with("+-") ? length : 1);
    if (std::is_integral_v<T> && base == 16)
        DropHexPrefix(head);
    std::from_chars_result const result = Convert(head, value, base);
    if (result.ec != std::errc{})
        return 0;
    auto const unread = static_cast<std::size_t>(head.data() + head.size() - result.ptr);
    return length - unread;
}

template std::size_t ReadNumber(std::u16string_view, int&, int);
template std::size_t ReadNumber(std::u16string_view, unsigned&, int);
template std::size_t ReadNumber(std::u16string_view, std::int64_t&, int);
template std::size_t ReadNumber(std::u16string_view, std::uint64_t&, int);
template std::size_t ReadNumber(std::u16string_view, double&, int);

} // namespace vyncore::string
