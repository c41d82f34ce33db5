#pragma once

#include "vyncore/strings/UString.h"

namespace vyncore::proplist {

/// A text as a stored property list holds it: UTF-8 in which every character is one of XML's. What is none, control
/// characters, halves of surrogate pairs and bytes that are no UTF-8, and a blank at either end, which hands and
/// programs like to lose, is escaped: a byte as "\x0A" in UTF8String, a unit as "\u000A" in UString. A backslash is
/// doubled then. A text that needs none of that stands as it is, backslashes included.
struct StoredText {
    UTF8String text;
    bool escaped = false;
};

/// [any-thread]
StoredText StoreText(UTF8String const& text);
StoredText StoreText(UString const& text);

/// The inverse, to the bit. False when a backslash of an escaped text begins no escape of this type; `text` says
/// nothing then.
/// [any-thread]
bool RestoreText(StoredText const& stored, UTF8String& text);
bool RestoreText(StoredText const& stored, UString& text);

} // namespace vyncore::proplist
