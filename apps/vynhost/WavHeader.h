#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vynhost {

/// What the header of a WAV file says of its audio, against what is there.
struct WavData {
    std::uint64_t promisedBytes = 0;
    std::uint64_t presentBytes = 0;
};

/// Looks for the audio of a WAV file (RIFF, RIFX, RF64). Empty when the file is none, or has no audio before its end.
/// Readers of audio files quietly make do with what is there; this is how a truncated file shows.
/// [any-thread]
std::optional<WavData> FindWavData(std::string const& path);

} // namespace vynhost
