#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"

#include <nlohmann/json.hpp>

namespace vynhost {

/// What is known of a filter, as a row of the document of `list`.
/// [any-thread]
nlohmann::ordered_json ToRow(vynaudiofilterhost::AudioFilterDescriptor const& descriptor);

} // namespace vynhost
