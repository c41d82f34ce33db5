#pragma once

#include <string>

/// The script interface in words, from its definitions themselves: every class, what it is called, and its items.
namespace vynhost {

/// For a person.
/// [main-thread]
std::string FormatScriptInterfaceText();

/// [{"class", "namespace", "description", "items": [{"name", "kind": "property"|"method", "arguments": [{"name",
/// "type"}], "result", "description"}]}]
/// [main-thread]
std::string FormatScriptInterfaceJSON();

/// The part of docs/scripting.md that is made from it.
/// [main-thread]
std::string FormatScriptInterfaceMarkdown();

} // namespace vynhost
