#pragma once

#include "vyncore/utility/Guid.h"

namespace vynaudiofilterhost::vst {

/// The factory that makes every VST 2.x filter, as catalogue records name it.
/// [any-thread]
inline vyncore::utility::Guid const& GetVSTFactoryGuid() {
    static vyncore::utility::Guid const guid(0xE84E3BDD, 0xB4E2, 0x416C,
                                             {0x8B, 0x6D, 0x5C, 0x0D, 0xD7, 0x6D, 0x19, 0x7F});
    return guid;
}

} // namespace vynaudiofilterhost::vst
