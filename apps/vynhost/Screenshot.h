#pragma once

#include <cstddef>
#include <vector>

namespace vynhost {

/// A picture of a window. A plain record.
struct Screenshot {
    int width = 0;  ///< in pixels
    int height = 0; ///< likewise
    /// Red, green and blue of each pixel, line by line from the top: width * height * 3 bytes.
    std::vector<unsigned char> rgb = {};

    /// A black picture of that size.
    /// [any-thread]
    static Screenshot MakeBlack(int width, int height) {
        return {width, height,
                std::vector<unsigned char>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)};
    }

    /// The three bytes of a pixel.
    /// [any-thread]
    unsigned char* At(int x, int y) {
        return &rgb[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 3];
    }
};

} // namespace vynhost
