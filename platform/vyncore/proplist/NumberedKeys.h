#pragma once

#include "vyncore/proplist/PropList.h"
#include "vyncore/strings/UString.h"

#include <string_view>
#include <vector>

/// Collections in a property list: entries whose keys are a stem and a decimal number from 0 to count - 1, written
/// without a sign or zeros in front. Read in the order of the numbers; those that are missing are passed over. The time
/// it takes goes with what the list holds, not with the count, which a damaged file may have in the thousands of
/// millions.
namespace vyncore::proplist::utils {

/// The sub-lists of a collection.
/// [any-thread]
std::vector<PropList const*> FindNumberedLists(PropList const& list, std::string_view stem, int count);

/// The texts of a collection, without the empty ones.
/// [any-thread]
std::vector<UString> FindNumberedTexts(PropList const& list, std::string_view stem, int count);

} // namespace vyncore::proplist::utils
