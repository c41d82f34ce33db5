#include "vynaudiofilterhost/inventory/LocatorOrder.h"

#include "vyncore/filesupport/CompareFileNames.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace vynaudiofilterhost {

using vyncore::UTF8String;
using vyncore::filesupport::FileNameKey;

namespace {

struct Placed {
    PluginLocator const* locator;
    std::size_t nameBegin;
    std::size_t nameLength;
};

} // namespace

std::size_t HashOfModule(PluginLocator const& locator) {
    constexpr std::size_t kFactor = 0x9E3779B97F4A7C15; // spreads small numbers
    auto const technology = static_cast<std::size_t>(locator.GetTechnologyType());
    return std::hash<std::string_view>()(FileNameKey(locator.GetPath())) ^ (technology * kFactor);
}

void SortLocators(std::vector<PluginLocator const*>& locators) {
    UTF8String names; // all in one piece, which is quickly gone through
    std::vector<Placed> placed;
    placed.reserve(locators.size());
    for (PluginLocator const* const locator : locators) {
        UTF8String const name = FileNameKey(locator->GetPath());
        placed.push_back({locator, names.size(), name.size()});
        names += name;
    }
    auto const nameOf = [&names](Placed const& one) {
        return std::string_view(names).substr(one.nameBegin, one.nameLength);
    };
    auto const isBefore = [&nameOf](Placed const& left, Placed const& right) {
        auto const technology = left.locator->GetTechnologyType(), other = right.locator->GetTechnologyType();
        return technology != other ? technology < other : nameOf(left) < nameOf(right);
    };
    // They often come as they were saved, or as they were found, in order.
    if (!std::is_sorted(placed.begin(), placed.end(), isBefore))
        std::stable_sort(placed.begin(), placed.end(), isBefore);
    std::transform(placed.begin(), placed.end(), locators.begin(), [](Placed const& one) { return one.locator; });
}

} // namespace vynaudiofilterhost
