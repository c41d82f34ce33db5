#include "vyncore/strings/NumberReader.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>
#include <type_traits>

namespace vyncore::string {

namespace {

bool MayBelongToNumber(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           unit == u'+' || unit == u'-' || unit == u'.';
}

std::string NumberHead(std::u16string_view text) {
    std::string head;
    for (char16_t const unit : text) {
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

template <class T>
std::from_chars_result Convert(std::string const& head, T& value, [[maybe_unused]] int base) {
    char const* const end = head.data() + head.size();
    if constexpr (std::is_floating_point_v<T>)
        return std::from_chars(head.data(), end, value);
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
