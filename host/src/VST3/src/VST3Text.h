#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vynaudiofilterhost::vst3 {

/// The text in a field of a plug-in's record: up to its first 0, or the whole field when it lacks one.
/// [any-thread]
template <class Char, std::size_t kSize>
std::basic_string_view<Char> TextOf(Char const (&field)[kSize]) {
    return {field, static_cast<std::size_t>(std::find(field, field + kSize, Char(0)) - field)};
}

} // namespace vynaudiofilterhost::vst3
