#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <concepts>
#include <span>
#include <string_view>

namespace vyncore {

/// The localised text of `zstring` with the marks @0 to @9 filled from `arguments`, in one pass: a mark inside an
/// argument stays. A mark without an argument stays as well.
/// [any-thread]
VYN_API UString FillZString(std::string_view zstring, std::span<UString const> arguments);

/// The same with the arguments one by one, @0 first.
/// [any-thread]
template <std::convertible_to<UString>... Arguments>
UString ZString(std::string_view zstring, Arguments const&... arguments) {
    static_assert(sizeof...(Arguments) <= 10, "there are ten marks");
    if constexpr (sizeof...(Arguments) == 0) {
        return FillZString(zstring, {});
    } else {
        UString const list[] = {UString(arguments)...};
        return FillZString(zstring, list);
    }
}

} // namespace vyncore
