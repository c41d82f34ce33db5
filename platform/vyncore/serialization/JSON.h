#pragma once

#include "vyncore/Export.h"
#include "vyncore/serialization/JSONArray.h"
#include "vyncore/serialization/JSONObject.h"
#include "vyncore/strings/UString.h"

#include <boost/any.hpp>

#include <cstddef>

/// JSON text and the values in it. A value is a boost::any that holds one of:
///
/// | JSON | in the boost::any |
/// | --- | --- |
/// | object | JSONObject |
/// | array | JSONArray |
/// | string | UTF8String |
/// | number with a minus, without fraction and exponent | std::int64_t |
/// | other number without fraction and exponent | std::uint64_t |
/// | number with either, and one too large for 64 bits | double |
/// | true, false | bool |
/// | null | nothing: an empty boost::any |
///
/// Taking a value out with boost::any_cast throws boost::bad_any_cast when it is another one. Values are plain; two
/// threads that share one are ordered by its owner.
namespace vyncore::serialization {

/// The most levels of arrays and objects inside each other, the outermost included.
constexpr std::size_t kMostJSONLevels = 256;

/// Reads a text that is one JSON value, with blanks around it or not. Empty on failure: text that is no JSON or has
/// anything behind the value, malformed UTF-8, a number beyond every double, more than kMostJSONLevels levels. The text
/// "null" gives an empty one too. Members stay in the order of the text; of members with one key the last one's value
/// counts, in the place of the first. The time grows as n log n with the length n of the text, whatever its keys are.
/// [any-thread]
VYN_API boost::any JSONParse(UTF8String const& text);

/// The text of a value, on one line without blanks, members in their order. Besides the types above, these are taken:
/// int, unsigned, long long, unsigned long long, float, UString and char const* (null: null); any other type throws
/// boost::bad_any_cast. Malformed UTF-8 in a text becomes U+FFFD. A number with fraction is written with as many digits
/// as it takes to read the same number back, an infinite one and what is no number as null.
/// [any-thread]
VYN_API UTF8String GetJSONUTF8String(boost::any const& value);

/// Makes `value` the member `key` of an object. An empty `object` becomes one first. Throws boost::bad_any_cast when it
/// holds something else, std::length_error when it would be nested deeper than kMostJSONLevels; it is as it was then.
/// [any-thread]
VYN_API void AddToObject(boost::any& object, UTF8String const& key, boost::any const& value);

/// Appends `value` to an array, in place. An empty `array` becomes one first. Throws as AddToObject does.
/// [any-thread]
VYN_API void AppendToArray(boost::any& array, boost::any const& value);

/// The member of that key; null when there is none or `object` holds no object. Valid until the object changes.
/// [any-thread]
VYN_API boost::any const* GetVariantInObject(boost::any const& object, UTF8String const& key);

} // namespace vyncore::serialization
