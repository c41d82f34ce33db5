#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

namespace vyntest {

/// Bytes as a text.
inline std::string MidiText(std::initializer_list<int> bytes) {
    std::string text;
    for (int const byte : bytes)
        text += static_cast<char>(byte);
    return text;
}

/// A big-endian number.
inline std::string MidiNumber(std::size_t number, int bytes) {
    std::string text;
    for (int place = bytes - 1; place >= 0; --place)
        text += static_cast<char>(number >> (8 * place));
    return text;
}

inline std::string MidiChunk(std::string const& name, std::string const& content) {
    return name + MidiNumber(content.size(), 4) + content;
}

inline std::string MidiHeader(int format, int tracks, int division) {
    return MidiChunk("MThd", MidiNumber(static_cast<std::size_t>(format), 2) +
                                 MidiNumber(static_cast<std::size_t>(tracks), 2) +
                                 MidiNumber(static_cast<std::size_t>(division), 2));
}

/// The track of these bytes with its end behind them, so many ticks later.
inline std::string MidiTrack(std::initializer_list<int> bytes, int endDelta = 0) {
    return MidiChunk("MTrk", MidiText(bytes) + MidiText({endDelta, 0xFF, 0x2F, 0x00}));
}

/// A file of format 0 for one track, else of format 1.
inline std::string MidiFileText(int division, std::vector<std::string> const& tracks) {
    std::string text = MidiHeader(tracks.size() == 1 ? 0 : 1, static_cast<int>(tracks.size()), division);
    for (std::string const& track : tracks)
        text += track;
    return text;
}

inline std::string WriteMidi(std::filesystem::path const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

} // namespace vyntest
