#pragma once

#include "vyncore/Export.h"
#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"

#include <cstddef>

/// The text form of a property list: XML that a person can read and change; docs/formats.md describes it.
namespace vyncore::proplist::utils {

/// The most lists inside each other, the outermost included.
constexpr std::size_t kMostListLevels = 256;

/// The text of a list. Equal lists give equal bytes, and ReadPropList gives back what was written, bit for bit and
/// type for type, whatever is in it. Throws std::length_error when there are more than kMostListLevels levels, which
/// could not be read back.
/// [any-thread]
VYN_API UTF8String WritePropList(PropList const& list);

/// Makes `list` what the text says. False when the text is no property list, whole: bad XML or UTF-8, a document type,
/// an element, an attribute or an escape that the form doesn't know, a number that is none or doesn't fit its type, the
/// same key twice in one list, more than kMostListLevels levels. `list` stays as it was then. The time grows as n log n
/// with the length n of the text.
/// [any-thread]
VYN_API bool ReadPropList(UTF8String const& text, PropList& list);

/// The same without a copy of the text, which says nothing afterwards.
/// [any-thread]
VYN_API bool ReadPropList(UTF8String&& text, PropList& list);

} // namespace vyncore::proplist::utils
