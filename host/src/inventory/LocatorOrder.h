#pragma once

#include "vynaudiofilterhost/inventory/PluginLocator.h"

#include <cstddef>
#include <vector>

namespace vynaudiofilterhost {

/// A hash that equal locators have in common, however their paths are written.
/// [any-thread]
std::size_t HashOfModule(PluginLocator const& locator);

/// Puts locators in order as their operator< has it, equal ones in the order that they have. It looks at each path
/// once, and not at each comparison, which counts when there are many.
/// [any-thread]
void SortLocators(std::vector<PluginLocator const*>& locators);

} // namespace vynaudiofilterhost
