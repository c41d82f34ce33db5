#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vynhost {

/// How much of its audio an audio file lacks.
struct Shortfall {
    std::uint64_t promisedBytes = 0; ///< by the header
    std::uint64_t presentBytes = 0;  ///< fewer than that
};

/// Holds the header of an audio file (WAV, RF64, W64, AIFF, AU, CAF) against what is there. Readers of audio files
/// quietly make do with the rest of a truncated file; this is how it shows. Empty when nothing is missing, when the
/// header leaves the length open, or when the file is of another kind.
/// [any-thread]
std::optional<Shortfall> FindShortfall(std::string const& path);

} // namespace vynhost
