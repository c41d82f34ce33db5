#pragma once

#include <string>

namespace vynhost {

struct Screenshot;

/// Writes a picture as a PNG file, which appears whole or stays as it was. Throws CommandError that names the file.
/// @param picture  at least one pixel
/// [main-thread]
void WritePNGFile(std::string const& path, Screenshot const& picture);

} // namespace vynhost
