#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <cstdint>

namespace vynfixtures {

/// How the editor of a VST 2.x fixture behaves. What it asks of the host while it opens, closes or idles are host calls
/// of the configuration; that it has one at all is one of the effect's flags.
struct VSTFixtureEditorConfiguration {
    bool hasRect = true;       ///< false: effEditGetRect answers 1 and leaves the pointer as it is
    bool rectWhenOpen = false; ///< true: only between effEditOpen and effEditClose
    vynaudiofilterhost::vst::ERect rect = {.top = 0, .left = 0, .bottom = 300, .right = 400};
    std::int64_t openAnswer = 1;   ///< to effEditOpen
    std::int64_t vendorAnswer = 0; ///< to effVendorSpecific
};

} // namespace vynfixtures
