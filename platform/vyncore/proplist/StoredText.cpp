#include "vyncore/proplist/StoredText.h"

#include "vyncore/strings/StringUtils.h"
#include "vyncore/xml/References.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <utility>

namespace vyncore::proplist {

namespace {

// What a text begins with: a character of so many units, or one unit that is part of none.
struct Piece {
    char32_t code = 0;
    std::size_t length = 1;
    bool isCharacter = false;
};

std::size_t LengthByLead(char lead) {
    auto const byte = static_cast<unsigned char>(lead);
    if (byte < 0x80)
        return 1;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

Piece FirstPiece(std::string_view text) {
    std::string_view const unit = text.substr(0, LengthByLead(text.front()));
    if (!utf8::is_valid(unit.begin(), unit.end()))
        return {};
    return {utf8::unchecked::peek_next(unit.begin()), unit.size(), true};
}

Piece FirstPiece(std::u16string_view text) {
    char16_t const unit = text.front();
    bool const isLead = unit >= 0xD800 && unit <= 0xDBFF;
    if (isLead && text.size() > 1 && text[1] >= 0xDC00 && text[1] <= 0xDFFF)
        return {0x10000u + ((char32_t{unit} - 0xD800u) << 10) + (char32_t{text[1]} - 0xDC00u), 2, true};
    return {unit, 1, unit < 0xD800 || unit > 0xDFFF};
}

// Every control character is escaped: line ends change on the way through editors, and in attributes.
bool Stands(Piece const& piece, bool isAtEnd) {
    bool const isLostBlank = isAtEnd && piece.code == U' ';
    return piece.isCharacter && piece.code >= 0x20 && xml::IsXMLCharacter(piece.code) && !isLostBlank;
}

template <class Unit>
bool NeedsEscapes(std::basic_string_view<Unit> text) {
    for (std::size_t at = 0; at < text.size();) {
        Piece const piece = FirstPiece(text.substr(at));
        bool const isAtEnd = at == 0 || at + piece.length == text.size();
        if (!Stands(piece, isAtEnd))
            return true;
        at += piece.length;
    }
    return false;
}

constexpr char EscapeLetter(char) {
    return 'x';
}
constexpr char EscapeLetter(char16_t) {
    return 'u';
}

template <class Unit>
void AppendEscape(Unit unit, UTF8String& stored) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    stored += '\\';
    stored += EscapeLetter(unit);
    for (int shift = 8 * static_cast<int>(sizeof(Unit)) - 4; shift >= 0; shift -= 4)
        stored += kDigits[(static_cast<unsigned>(unit) >> shift) & 0xFu];
}

template <class Unit>
UTF8String Escape(std::basic_string_view<Unit> text) {
    UTF8String stored;
    for (std::size_t at = 0; at < text.size();) {
        Piece const piece = FirstPiece(text.substr(at));
        bool const isAtEnd = at == 0 || at + piece.length == text.size();
        if (piece.code == U'\\')
            stored += "\\\\";
        else if (Stands(piece, isAtEnd))
            utf8::append(piece.code, std::back_inserter(stored));
        else
            std::ranges::for_each(text.substr(at, piece.length), [&](Unit unit) { AppendEscape(unit, stored); });
        at += piece.length;
    }
    return stored;
}

void AppendPlain(std::string_view plain, UTF8String& text) {
    text += plain;
}

void AppendPlain(std::string_view plain, UString& text) {
    text += string::UTF8to16(plain);
}

// Takes the escape at the head of `stored` away.
template <class Unit>
bool TakeEscape(std::string_view& stored, std::basic_string<Unit>& text) {
    constexpr std::size_t kDigits = 2 * sizeof(Unit);
    if (stored.starts_with("\\\\")) {
        text += Unit{'\\'};
        stored.remove_prefix(2);
        return true;
    }
    if (stored.size() < 2 + kDigits || stored[1] != EscapeLetter(Unit{}))
        return false;
    char const* const end = stored.data() + 2 + kDigits;
    unsigned unit = 0;
    auto const [read, error] = std::from_chars(stored.data() + 2, end, unit, 16);
    text += static_cast<Unit>(unit);
    stored.remove_prefix(2 + kDigits);
    return error == std::errc{} && read == end;
}

template <class Unit>
bool Restore(StoredText const& stored, std::basic_string<Unit>& text) {
    text.clear();
    std::string_view rest = stored.text;
    while (!rest.empty()) {
        std::string_view const plain = rest.substr(0, stored.escaped ? rest.find('\\') : rest.npos);
        AppendPlain(plain, text);
        rest.remove_prefix(plain.size());
        if (!rest.empty() && !TakeEscape(rest, text))
            return false;
    }
    return true;
}

template <class Unit>
StoredText Store(std::basic_string<Unit> const& text) {
    bool const escaped = NeedsEscapes<Unit>(text);
    if (escaped)
        return {Escape<Unit>(text), true};
    UTF8String stored;
    if constexpr (sizeof(Unit) == 1)
        stored = text;
    else
        stored = string::UTF16to8(text);
    return {std::move(stored), false};
}

} // namespace

StoredText StoreText(UTF8String const& text) {
    return Store(text);
}

StoredText StoreText(UString const& text) {
    return Store(text);
}

bool RestoreText(StoredText const& stored, UTF8String& text) {
    return Restore(stored, text);
}

bool RestoreText(StoredText const& stored, UString& text) {
    return Restore(stored, text);
}

} // namespace vyncore::proplist
