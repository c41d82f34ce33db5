#pragma once

#include "vyncore/strings/UString.h"

#include <string_view>

namespace vyncore::xml {

/// Puts the characters in place of the references in a piece of XML: "&amp;" and the other four that XML names,
/// "&#10;", "&#xA;". False, and `text` says nothing, when there is another name, an ampersand that begins no reference,
/// or the number of what is no XML character.
/// [any-thread]
bool ResolveReferences(std::string_view raw, UTF8String& text);

/// Whether XML can hold the code point.
/// [any-thread]
bool IsXMLCharacter(char32_t code) noexcept;

/// Whether a text is UTF-8 and holds nothing that XML can't.
/// [any-thread]
bool IsXMLText(std::string_view utf8) noexcept;

} // namespace vyncore::xml
