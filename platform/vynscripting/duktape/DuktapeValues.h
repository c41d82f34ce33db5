#pragma once

#include "vyncore/strings/UString.h"

#include <string>
#include <string_view>

struct duk_hthread;

/// Texts on their way into and out of the engine. It holds them as UTF-16 whose units are written as UTF-8 each.
namespace vynscripting::duktape {

/// Pushes a text; whatever its units are, a script sees the same ones.
/// [main-thread]
void PushText(duk_hthread* context, std::u16string_view text);

/// Pushes UTF-8, of which what is malformed becomes U+FFFD.
/// [main-thread]
void PushUTF8(duk_hthread* context, std::string_view text);

/// The string at the index, whose type is that of a string.
/// [main-thread]
vyncore::UString ReadText(duk_hthread* context, int index);

/// The same in UTF-8. A half of a surrogate pair becomes U+FFFD.
/// [main-thread]
std::string ReadUTF8(duk_hthread* context, int index);

/// Raises an error of a script. The class is one of Duktape's, as DUK_ERR_TYPE_ERROR. Its place is that of the script
/// that called.
/// [main-thread]
[[noreturn]] void RaiseError(duk_hthread* context, int errorClass, std::string const& utf8);

} // namespace vynscripting::duktape
