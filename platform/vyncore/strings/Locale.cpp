#include "vyncore/strings/Locale.h"

#include <stdexcept>

namespace vyncore {

namespace {

// "C.UTF-8" knows every letter; where a system lacks it, ASCII letters remain.
std::locale MakeRules() {
    try {
        return {std::locale::classic(), "C.UTF-8", std::locale::ctype};
    } catch (std::runtime_error const&) {
        return std::locale::classic();
    }
}

} // namespace

Locale::Locale() : mLocale(MakeRules()) {}

Locale const& Locale::Default() {
    static Locale const& locale = *new Locale;
    return locale;
}

char16_t Locale::ToUpper(char16_t unit) const {
    if (unit >= 0xD800 && unit <= 0xDFFF)
        return unit;
    wchar_t const upper = std::use_facet<std::ctype<wchar_t>>(mLocale).toupper(static_cast<wchar_t>(unit));
    return static_cast<char16_t>(upper);
}

} // namespace vyncore
