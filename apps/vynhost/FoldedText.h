#pragma once

#include <string>
#include <string_view>

namespace vynhost {

/// The text without what a person doesn't look at: in one letter case, and without the blanks at its ends.
/// [any-thread]
std::string Fold(std::string_view text);

} // namespace vynhost
