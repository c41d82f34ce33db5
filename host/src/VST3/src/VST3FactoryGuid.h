#pragma once

#include "vyncore/utility/Guid.h"

namespace vynaudiofilterhost::vst3 {

/// The factory that makes every VST3 filter, as catalogue records name it.
/// [any-thread]
inline vyncore::utility::Guid const& GetVST3FactoryGuid() {
    static vyncore::utility::Guid const guid(0xEB0FED8B, 0x7841, 0x4F2B,
                                             {0xA6, 0x55, 0xD8, 0xCD, 0xDE, 0xA9, 0xF4, 0x65});
    return guid;
}

} // namespace vynaudiofilterhost::vst3
