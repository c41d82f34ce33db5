#include "vynaudiofilterhost/inventory/UnsupportedPlugins.h"

#include "vyncore/strings/ASCIICase.h"

#include <algorithm>

namespace vynaudiofilterhost {

using vyncore::UString;

namespace {

UString Lower(UString text) {
    for (char16_t& unit : text)
        unit = vyncore::string::LowerASCII(unit);
    return text;
}

UnsupportedPlugin Lower(UnsupportedPlugin const& plugin) {
    return {Lower(plugin.fileName), Lower(plugin.uniqueID), Lower(plugin.version)};
}

} // namespace

UnsupportedPlugins::UnsupportedPlugins(std::vector<UnsupportedPlugin> const& plugins) {
    for (UnsupportedPlugin const& plugin : plugins)
        mByFileName.emplace(Lower(plugin.fileName), Lower(plugin));
}

bool UnsupportedPlugins::HasMatch(UnsupportedPlugin const& plugin) const {
    UnsupportedPlugin const asked = Lower(plugin);
    auto const [first, last] = mByFileName.equal_range(asked.fileName);
    return std::any_of(first, last, [&asked](auto const& entry) {
        auto const& [fileName, uniqueID, version] = entry.second;
        return (uniqueID.empty() || uniqueID == asked.uniqueID) && (version.empty() || version == asked.version);
    });
}

} // namespace vynaudiofilterhost
