#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

namespace vyncore::xml::utils {

/// A text as it stands inside an element of XML source: "&amp;", "&lt;" and "&gt;" for the three characters that XML
/// reserves there. This is also how the text form of a property list writes a text that it needn't escape.
/// [any-thread]
VYN_API UString EncodeReservedCharacters(UString const& text);

} // namespace vyncore::xml::utils
