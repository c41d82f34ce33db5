#include "vyncore/utility/Guid.h"

#include "vyncore/strings/StringUtils.h"

#include <cstdio>
#include <ostream>
#include <string_view>

namespace vyncore::utility {

namespace {

constexpr std::size_t kTextLength = 36;

bool IsDashAt(std::size_t index) {
    return index == 8 || index == 13 || index == 18 || index == 23;
}

int HexDigit(char16_t unit) {
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    char16_t const lower = unit | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

// The 16 bytes in the order of the text; false when the text has another form.
bool ReadBytes(std::u16string_view text, std::array<unsigned, 16>& bytes) {
    if (text.size() != kTextLength)
        return false;
    std::size_t digits = 0;
    for (std::size_t index = 0; index < kTextLength; ++index) {
        int const digit = HexDigit(text[index]);
        if (IsDashAt(index) ? text[index] != u'-' : digit < 0)
            return false;
        if (IsDashAt(index))
            continue;
        bytes[digits / 2] = bytes[digits / 2] * 16 + static_cast<unsigned>(digit);
        ++digits;
    }
    return true;
}

} // namespace

Guid::Guid(UString const& text) : Guid(StringToGUID(text)) {}

Guid Guid::StringToGUID(UString const& text) {
    std::u16string_view view(text);
    if (view.starts_with(u'{') && view.ends_with(u'}'))
        view = view.substr(1, view.size() - 2);
    std::array<unsigned, 16> bytes{};
    if (!ReadBytes(view, bytes))
        return {};
    std::array<std::uint8_t, 8> rest{};
    for (std::size_t index = 0; index < rest.size(); ++index)
        rest[index] = static_cast<std::uint8_t>(bytes[index + 8]);
    return {(bytes[0] << 24) | (bytes[1] << 16) | (bytes[2] << 8) | bytes[3],
            static_cast<std::uint16_t>((bytes[4] << 8) | bytes[5]),
            static_cast<std::uint16_t>((bytes[6] << 8) | bytes[7]), rest};
}

UString Guid::AsString() const {
    char text[kTextLength + 1];
    std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", mFirst, mSecond, mThird,
                  mRest[0], mRest[1], mRest[2], mRest[3], mRest[4], mRest[5], mRest[6], mRest[7]);
    return string::AsciiToUTF16(text);
}

std::ostream& operator<<(std::ostream& stream, Guid const& guid) {
    return stream << string::UTF16to8(guid.AsString());
}

} // namespace vyncore::utility
