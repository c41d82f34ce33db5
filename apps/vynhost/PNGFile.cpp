#include "vynhost/PNGFile.h"

#include "vynhost/CommandError.h"
#include "vynhost/Screenshot.h"

#include "os/ReplacementFile.h"

#include <png.h>

#include <stdexcept>

namespace vynhost {

namespace {

std::string Encode(std::string const& path, Screenshot const& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, picture.rgb.data(), 0, nullptr))
        throw CommandError::OfFile(path, std::string("cannot be made: ") + image.message);
    bytes.resize(size);
    return bytes;
}

} // namespace

void WritePNGFile(std::string const& path, Screenshot const& picture) {
    std::string const bytes = Encode(path, picture);
    try {
        os::ReplacementFile file(path);
        if (!file.Write(bytes))
            throw CommandError::OfFile(path, "could not be written: the disk takes no more");
        file.Commit();
    } catch (CommandError const&) {
        throw;
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(path, error.what());
    }
}

} // namespace vynhost
