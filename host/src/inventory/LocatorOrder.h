#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include <cstddef>
#include <vector>

namespace vynaudiofilterhost {

/// A hash that locators with one path have in common, however it is written.
/// [any-thread]
std::size_t HashOfFile(PluginLocator const& locator);

/// Puts locators in order as their operator< has it, equal ones in the order that they have. It looks at each path
/// once, and not at each comparison, which counts when there are many.
/// [any-thread]
void SortLocators(std::vector<PluginLocator const*>& locators);

} // namespace vynaudiofilterhost
