#include "vynscripting/duktape/DuktapeValues.h"

#include "vyncore/strings/StringUtils.h"

#include <duktape.h>

#include <algorithm>
#include <cstdlib>

namespace vynscripting::duktape {

namespace {

bool IsASCII(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// What a unit takes, written as if it were a code point.
void AppendUnit(std::string& bytes, char16_t unit) {
    auto const put = [&](unsigned byte) { bytes.push_back(static_cast<char>(byte)); };
    if (unit < 0x80) {
        put(unit);
    } else if (unit < 0x800) {
        put(0xC0u | unit >> 6);
        put(0x80u | (unit & 0x3Fu));
    } else {
        put(0xE0u | unit >> 12);
        put(0x80u | (unit >> 6 & 0x3Fu));
        put(0x80u | (unit & 0x3Fu));
    }
}

constexpr char16_t kReplacement = 0xFFFD;

// Reads one unit of at most three bytes and moves on. What a script made by other means becomes U+FFFD.
char16_t TakeUnit(std::string_view bytes, std::size_t& at) {
    auto const byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(bytes[i])); };
    auto const follows = [&](std::size_t i) { return i < bytes.size() && (byte(i) & 0xC0u) == 0x80u; };
    std::size_t const first = at++;
    unsigned const lead = byte(first);
    if (lead < 0x80)
        return static_cast<char16_t>(lead);
    if ((lead & 0xE0u) == 0xC0u && follows(first + 1)) {
        at = first + 2;
        return static_cast<char16_t>((lead & 0x1Fu) << 6 | (byte(first + 1) & 0x3Fu));
    }
    if ((lead & 0xF0u) == 0xE0u && follows(first + 1) && follows(first + 2)) {
        at = first + 3;
        return static_cast<char16_t>((lead & 0x0Fu) << 12 | (byte(first + 1) & 0x3Fu) << 6 | (byte(first + 2) & 0x3Fu));
    }
    while (follows(at))
        ++at;
    return kReplacement;
}

std::string_view ViewBytes(duk_hthread* context, int index) {
    duk_size_t length = 0;
    char const* const bytes = duk_get_lstring(context, index, &length);
    return bytes ? std::string_view(bytes, length) : std::string_view();
}

} // namespace

void PushText(duk_hthread* context, std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (char16_t const unit : text)
        AppendUnit(bytes, unit);
    duk_push_lstring(context, bytes.data(), bytes.size());
}

void PushUTF8(duk_hthread* context, std::string_view text) {
    if (IsASCII(text))
        duk_push_lstring(context, text.data(), text.size());
    else
        PushText(context, vyncore::string::UTF8to16(text));
}

vyncore::UString ReadText(duk_hthread* context, int index) {
    std::string_view const bytes = ViewBytes(context, index);
    vyncore::UString text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();)
        text.push_back(TakeUnit(bytes, at));
    return text;
}

std::string ReadUTF8(duk_hthread* context, int index) {
    std::string_view const bytes = ViewBytes(context, index);
    if (IsASCII(bytes))
        return std::string(bytes);
    auto const utf8 = vyncore::string::UTF16to8(ReadText(context, index));
    return std::string(utf8.begin(), utf8.end());
}

void RaiseError(duk_hthread* context, int errorClass, std::string const& utf8) {
    PushUTF8(context, utf8);
    duk_push_error_object_raw(context, errorClass, nullptr, 0, "%s", duk_get_string(context, -1));
    duk_throw_raw(context);
    std::abort();
}

} // namespace vynscripting::duktape
