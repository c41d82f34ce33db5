#pragma once

#include <cstddef>
#include <string>

namespace vynhost {

/// Throws CommandError, with the reason, unless the path leads to an ordinary file that may be read and is not empty.
/// Opening anything else might wait for ever.
/// [any-thread]
void CheckInputFile(std::string const& path);

/// All bytes of a file. Throws CommandError as CheckInputFile does, and when it holds more than `most` bytes.
/// [any-thread]
std::string ReadInputFile(std::string const& path, std::size_t most);

} // namespace vynhost
