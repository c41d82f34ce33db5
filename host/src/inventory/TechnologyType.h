#pragma once

#include <cstdint>

namespace vynaudiofilterhost {

/// Where a filter comes from. The numbers stand in stored files and in unique IDs, so they never change; a stored
/// number without a name here is kept as it is and belongs to no technology.
enum TechnologyType : std::int32_t {
    kTechnologyNone = 0,
    kTechnologyInternal = 1,
    kTechnologyVST = 2,
    kTechnologyVST3 = 3,
};

} // namespace vynaudiofilterhost
