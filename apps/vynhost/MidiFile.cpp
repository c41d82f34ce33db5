#include "vynhost/MidiFile.h"

#include "vynhost/CommandError.h"
#include "vynhost/InputFile.h"
#include "vynhost/MidiBytes.h"
#include "vynhost/MidiTempoMap.h"
#include "vynhost/MidiTrackReader.h"

#include <algorithm>
#include <stdexcept>

namespace vynhost {

// A reader of our own: Debian's libsmf ends the process, by an assertion, at many a malformed file.

namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20;

struct Header {
    std::uint32_t tracks = 0;
    std::uint32_t division = 0;
};

struct Chunk {
    std::string_view name;
    MidiBytes content;
};

Chunk TakeChunk(MidiBytes& file) {
    std::string_view const name = file.Take(4).GetText();
    std::uint32_t const size = file.TakeNumber(4);
    return {name, file.Take(size)};
}

Header ReadHeader(MidiBytes& file) {
    if (file.GetText().substr(0, 4) != "MThd")
        throw std::runtime_error("is no MIDI file: it does not begin with MThd");
    MidiBytes content = TakeChunk(file).content;
    std::uint32_t const format = content.TakeNumber(2);
    Header header;
    header.tracks = content.TakeNumber(2);
    header.division = content.TakeNumber(2);
    if (format > 1)
        throw std::runtime_error("is a MIDI file of format " + std::to_string(format) +
                                 (format == 2 ? ", songs side by side" : "") + ": only 0 and 1 can be played");
    if (header.tracks == 0 || (format == 0 && header.tracks != 1))
        throw std::runtime_error("the header announces " + std::to_string(header.tracks) + " tracks in format " +
                                 std::to_string(format));
    return header;
}

bool IsTrack(std::string_view name) {
    return name == "MTrk";
}

// Chunks of other kinds may stand anywhere.
MidiBytes TakeTrack(MidiBytes& file, std::uint32_t number, std::uint32_t tracks) {
    while (!file.IsAtEnd()) {
        Chunk const chunk = TakeChunk(file);
        if (IsTrack(chunk.name))
            return chunk.content;
    }
    throw std::runtime_error("ends in front of track " + std::to_string(number) + " of " + std::to_string(tracks));
}

MidiScore ReadTracks(MidiBytes& file, std::uint32_t tracks) {
    MidiScore score;
    for (std::uint32_t number = 1; number <= tracks; ++number)
        MidiTrackReader(TakeTrack(file, number, tracks), score).Read();
    // Some programs fill their files up; a further track would be music.
    if (IsTrack(file.GetText().substr(0, 4)))
        file.Fail("there are more tracks than the " + std::to_string(tracks) + " that the header announces");
    return score;
}

// What is at one tick stays in the order of the tracks.
template <class Entry>
void SortByTick(std::vector<Entry>& entries) {
    std::stable_sort(entries.begin(), entries.end(),
                     [](Entry const& left, Entry const& right) { return left.tick < right.tick; });
}

} // namespace

MidiSong ParseMidiFile(std::string_view bytes) {
    MidiBytes file(bytes);
    Header const header = ReadHeader(file);
    MidiScore score = ReadTracks(file, header.tracks);
    MidiTempoMap const times(header.division, std::move(score.tempos));
    SortByTick(score.messages);
    SortByTick(score.meters);

    MidiSong song;
    song.tempos = times.GetTempos();
    song.meters = times.Place(score.meters);
    song.seconds = times.GetSeconds(score.end);
    song.messages.reserve(score.messages.size());
    for (MidiScoreMessage const& message : score.messages)
        song.messages.push_back({times.GetSeconds(message.tick), message.status, message.data1, message.data2});
    ReleaseHeld(song);
    return song;
}

MidiSong ReadMidiFile(std::string const& path) {
    std::string const bytes = ReadInputFile(path, kMostBytes);
    try {
        return ParseMidiFile(bytes);
    } catch (std::runtime_error const& error) {
        throw CommandError::OfFile(path, error.what());
    }
}

} // namespace vynhost
