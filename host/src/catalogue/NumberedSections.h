#pragma once

#include "vyncore/proplist/PropList.h"

#include <string_view>
#include <vector>

namespace vynaudiofilterhost {

/// The sub-lists that are called `stem` and a decimal number from 0 to count - 1, in the order of the numbers. Those
/// that are missing are passed over. The time it takes goes with what the list holds, not with the count.
/// [any-thread]
std::vector<vyncore::proplist::PropList const*> FindNumberedSections(vyncore::proplist::PropList const& list,
                                                                     std::string_view stem, int count);

} // namespace vynaudiofilterhost
