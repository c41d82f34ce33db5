#pragma once

#include <cstdint>

namespace vynaudiofilterhost {

/// Whether rendering is tied to real time. The numbers are part of the interface.
enum RenderingContext : std::int32_t {
    kRenderingContextOffline = 0,
    kRenderingContextRealTime = 1,
};

} // namespace vynaudiofilterhost
