#include "vyncore/strings/StringStreams.h"

#include "vyncore/strings/NumberReader.h"
#include "vyncore/strings/StringUtils.h"

#include <charconv>
#include <iterator>
#include <utility>

namespace vyncore {

oUTF16StringStream& oUTF16StringStream::operator<<(std::u16string_view text) {
    mText += text;
    return *this;
}

oUTF16StringStream& oUTF16StringStream::operator<<(char16_t unit) {
    mText += unit;
    return *this;
}

oUTF16StringStream& oUTF16StringStream::operator<<(char16_t const* text) {
    return *this << (text ? std::u16string_view(text) : std::u16string_view());
}

oUTF16StringStream& oUTF16StringStream::operator<<(char const* bytes) {
    for (; bytes && *bytes != '\0'; ++bytes)
        *this << *bytes;
    return *this;
}

oUTF16StringStream& oUTF16StringStream::operator<<(char byte) {
    return *this << char16_t{static_cast<unsigned char>(byte)};
}

oUTF16StringStream& oUTF16StringStream::operator<<(std::string_view utf8) {
    return *this << string::UTF8to16(utf8);
}

oUTF16StringStream& oUTF16StringStream::operator<<(double value) {
    char digits[32];
    auto const result = std::to_chars(digits, std::end(digits), value, std::chars_format::general, 6);
    mText.append(digits, result.ptr);
    return *this;
}

oUTF16StringStream& oUTF16StringStream::AppendSigned(std::int64_t value) {
    char digits[24];
    mText.append(digits, std::to_chars(digits, std::end(digits), value).ptr);
    return *this;
}

oUTF16StringStream& oUTF16StringStream::AppendUnsigned(std::uint64_t value) {
    char digits[24];
    mText.append(digits, std::to_chars(digits, std::end(digits), value, mHex ? 16 : 10).ptr);
    return *this;
}

iUTF16StringStream::iUTF16StringStream(UString text) : mText(std::move(text)) {}

iUTF16StringStream& iUTF16StringStream::operator>>(int& value) {
    return Read(value);
}

iUTF16StringStream& iUTF16StringStream::operator>>(unsigned& value) {
    return Read(value);
}

iUTF16StringStream& iUTF16StringStream::operator>>(std::int64_t& value) {
    return Read(value);
}

iUTF16StringStream& iUTF16StringStream::operator>>(std::uint64_t& value) {
    return Read(value);
}

iUTF16StringStream& iUTF16StringStream::operator>>(double& value) {
    return Read(value);
}

iUTF16StringStream& iUTF16StringStream::operator>>(UString& word) {
    word.clear();
    SkipBlanks();
    std::size_t const start = mPosition;
    while (!mFailed && mPosition < mText.size() && !string::IsBlank(mText[mPosition]))
        ++mPosition;
    word.assign(mText, start, mPosition - start);
    mFailed = word.empty();
    return *this;
}

void iUTF16StringStream::SkipBlanks() {
    while (mPosition < mText.size() && string::IsBlank(mText[mPosition]))
        ++mPosition;
}

template <class T>
iUTF16StringStream& iUTF16StringStream::Read(T& value) {
    value = T{};
    if (mFailed)
        return *this;
    SkipBlanks();
    std::size_t const taken = string::ReadNumber(std::u16string_view(mText).substr(mPosition), value, mHex ? 16 : 10);
    mPosition += taken;
    mFailed = taken == 0;
    return *this;
}

} // namespace vyncore
