#include "vynhost/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace vynhost {

std::string_view TrimBlanks(std::string_view text) {
    constexpr char const* kBlanks = " \t\r\n";
    std::size_t const start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

std::optional<double> ReadNumber(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double number = 0.0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::string WriteNumber(double number) {
    constexpr int kDigits = 6;
    std::array<char, 32> text;
    auto const result =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, kDigits);
    return {text.data(), result.ptr};
}

double WidenNumber(float number) {
    std::array<char, 32> text;
    auto const written = std::to_chars(text.data(), text.data() + text.size(), number);
    double widened = static_cast<double>(number);
    std::from_chars(text.data(), written.ptr, widened);
    return widened;
}

} // namespace vynhost
