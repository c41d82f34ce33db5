#include "vynhost/InputFile.h"

#include "vynhost/CommandError.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace vynhost {

void CheckInputFile(std::string const& path) {
    std::error_code error;
    std::filesystem::file_status const status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw CommandError::OfFile(path, "cannot be read: there is no such file");
    if (status.type() == std::filesystem::file_type::directory)
        throw CommandError::OfFile(path, "cannot be read: it is a folder");
    if (status.type() != std::filesystem::file_type::regular)
        throw CommandError::OfFile(path, "cannot be read: " + (error ? error.message() : "it is no ordinary file"));
    if (!std::ifstream(path, std::ios::binary))
        throw CommandError::OfFile(path, "cannot be read: no permission");
    if (std::filesystem::file_size(path, error) == 0)
        throw CommandError::OfFile(path, "is empty");
}

std::string ReadInputFile(std::string const& path, std::size_t most) {
    CheckInputFile(path);
    std::error_code error;
    auto const size = std::filesystem::file_size(path, error);
    if (error)
        throw CommandError::OfFile(path, "cannot be read: " + error.message());
    if (size > most)
        throw CommandError::OfFile(path, "is larger than " + std::to_string(most >> 20) + " MiB");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (file.bad())
        throw CommandError::OfFile(path, "cannot be read to its end");
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

} // namespace vynhost
