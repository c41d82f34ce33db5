#pragma once

#include <cstddef>
#include <png.h>
#include <set>
#include <string>
#include <vector>

namespace vyntest {

/// How many colours a PNG file holds; 0 when it is none.
inline std::size_t CountColours(std::string const& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return 0;
    image.format = PNG_FORMAT_RGBA;
    std::vector<unsigned> pixels(PNG_IMAGE_SIZE(image) / sizeof(unsigned));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr))
        return 0;
    return std::set<unsigned>(pixels.begin(), pixels.end()).size();
}

} // namespace vyntest
