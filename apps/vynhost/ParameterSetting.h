#pragma once

#include <string>
#include <string_view>

namespace vynhost {

/// A parameter that a user wants set, as it was written. A plain record.
struct ParameterSetting {
    std::string parameter; ///< a name or an index
    std::string value;
};

/// Takes "NAME=VALUE" apart, at the last "=". Throws CommandError (wrong usage) when there is none, or no name.
/// [any-thread]
ParameterSetting ParseParameterSetting(std::string_view text);

} // namespace vynhost
