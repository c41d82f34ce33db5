#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// The texts with commas between them. Of many the first ones, and how many more there are.
/// [any-thread]
std::string ListTexts(std::vector<std::string> const& texts);

} // namespace vynhost
