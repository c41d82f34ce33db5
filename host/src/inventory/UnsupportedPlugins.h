#pragma once

#include "vynaudiofilterhost/inventory/UnsupportedPlugin.h"
#include "vyncore/strings/UString.h"

#include <map>
#include <vector>

namespace vynaudiofilterhost {

/// The entries of the static ban list, found by their file names. The case of ASCII letters doesn't count anywhere.
class UnsupportedPlugins {
public:
    /// None.
    /// [main-thread]
    UnsupportedPlugins() = default;
    /// [main-thread]
    explicit UnsupportedPlugins(std::vector<UnsupportedPlugin> const& plugins);

    /// Whether an entry has that file name and, as far as it names them, that ID and version.
    /// [main-thread]
    bool HasMatch(UnsupportedPlugin const& plugin) const;

private:
    std::multimap<vyncore::UString, UnsupportedPlugin> mByFileName; ///< all in lower case
};

} // namespace vynaudiofilterhost
