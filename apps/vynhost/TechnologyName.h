#pragma once

#include "vynaudiofilterhost/inventory/TechnologyType.h"

namespace vynhost {

/// What a technology is called in documents and tables.
/// [any-thread]
constexpr char const* TechnologyName(vynaudiofilterhost::TechnologyType type) {
    switch (type) {
    case vynaudiofilterhost::kTechnologyVST:
        return "VST";
    case vynaudiofilterhost::kTechnologyVST3:
        return "VST3";
    default:
        return "internal";
    }
}

} // namespace vynhost
