#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace vyncore {

/// An integer that is a number, as opposed to a truth value or a character.
template <class T>
concept StreamInteger =
    std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
    !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// Puts a text in UTF-16 together. Numbers look as a standard stream in the "C" locale writes them: integers in decimal
/// or lower-case hexadecimal, floating-point numbers with six significant digits, truth values as 1 and 0.
class VYN_API oUTF16StringStream {
public:
    /// [any-thread]
    oUTF16StringStream& operator<<(std::u16string_view text);
    oUTF16StringStream& operator<<(UString const& text) { return *this << std::u16string_view(text); }
    oUTF16StringStream& operator<<(char16_t unit);

    /// Null adds nothing.
    /// [any-thread]
    oUTF16StringStream& operator<<(char16_t const* text);

    /// Each byte becomes one unit of the same value, up to the terminating zero; null adds nothing.
    /// Text in UTF-8 goes in as a UTF8String or std::string_view, which are decoded.
    /// [any-thread]
    oUTF16StringStream& operator<<(char const* bytes);
    oUTF16StringStream& operator<<(char byte);

    /// Decoded from UTF-8; malformed bytes become U+FFFD.
    /// [any-thread]
    oUTF16StringStream& operator<<(std::string_view utf8);
    oUTF16StringStream& operator<<(UTF8String const& utf8) { return *this << std::string_view(utf8); }

    /// [any-thread]
    oUTF16StringStream& operator<<(double value);
    oUTF16StringStream& operator<<(float value) { return *this << static_cast<double>(value); }

    /// In hexadecimal a negative number shows the bits of its own type.
    /// [any-thread]
    template <StreamInteger T>
    oUTF16StringStream& operator<<(T value) {
        if constexpr (std::is_signed_v<T>) {
            if (!mHex)
                return AppendSigned(value);
        }
        return AppendUnsigned(static_cast<std::make_unsigned_t<T>>(value));
    }
    template <std::same_as<bool> T>
    oUTF16StringStream& operator<<(T value) {
        return *this << (value ? u'1' : u'0');
    }

    /// A pointer is no text and no number.
    template <class T>
    oUTF16StringStream& operator<<(T const* pointer) = delete;

    /// Whether integers are written in hexadecimal from here on.
    /// [any-thread]
    void SetHex(bool hex) { mHex = hex; }

    /// The text so far.
    /// [any-thread]
    UString str() const { return mText; }

private:
    oUTF16StringStream& AppendSigned(std::int64_t value);
    oUTF16StringStream& AppendUnsigned(std::uint64_t value);

    UString mText;
    bool mHex = false;
};

using UTF16StringStream = oUTF16StringStream;

/// Takes a text in UTF-16 apart, word by word and number by number, with blanks between them.
/// A read that fails stores 0 (or an empty text) and sets the stream to failed; so does every read after it.
class VYN_API iUTF16StringStream {
public:
    /// [any-thread]
    explicit iUTF16StringStream(UString text);

    /// A number ends at the first unit that can't belong to it. One that doesn't fit its type is a failure, and so is a
    /// minus sign for an unsigned one.
    /// [any-thread]
    iUTF16StringStream& operator>>(int& value);
    iUTF16StringStream& operator>>(unsigned& value);
    iUTF16StringStream& operator>>(std::int64_t& value);
    iUTF16StringStream& operator>>(std::uint64_t& value);
    iUTF16StringStream& operator>>(double& value);

    /// Everything up to the next blank.
    /// [any-thread]
    iUTF16StringStream& operator>>(UString& word);

    /// Whether integers are read as hexadecimal from here on, with or without "0x" in front.
    /// [any-thread]
    void SetHex(bool hex) { mHex = hex; }

    /// False from the first failed read on.
    /// [any-thread]
    explicit operator bool() const { return !mFailed; }

private:
    void SkipBlanks();
    template <class T>
    iUTF16StringStream& Read(T& value);

    UString mText;
    std::size_t mPosition = 0;
    bool mHex = false;
    bool mFailed = false;
};

/// A standard stream for UTF-8 whose numbers never depend on the user's locale.
class oUTF8StringStream : public std::ostringstream {
public:
    /// [any-thread]
    oUTF8StringStream() { imbue(std::locale::classic()); }
};

} // namespace vyncore
