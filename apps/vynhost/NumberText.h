#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers as people write and read them, the same under every locale.
namespace vynhost {

/// The text without the blanks at its ends.
/// [any-thread]
std::string_view TrimBlanks(std::string_view text);

/// The number that the whole text is, blanks around it and a plus sign in front aside. Empty when it is none, not
/// finite, or of a size that no double has.
/// [any-thread]
std::optional<double> ReadNumber(std::string_view text);

/// At most six digits: "0.5", "20000", "1e-07".
/// [any-thread]
std::string WriteNumber(double number);

/// The double that is written with as few digits as tell the float from all others: 0.1 and not 0.10000000149011612.
/// [any-thread]
double WidenNumber(float number);

} // namespace vynhost
