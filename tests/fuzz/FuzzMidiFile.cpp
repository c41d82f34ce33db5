#include "fuzz/FuzzTargets.h"
#include "fuzz/Require.h"
#include "vynhost/MidiFile.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace vynfuzz {

using vynhost::MidiMessage;

void FuzzMidiFile(std::uint8_t const* data, std::size_t size) {
    vynhost::MidiSong song;
    try {
        song = vynhost::ParseMidiFile({reinterpret_cast<char const*>(data), size});
    } catch (std::runtime_error const&) {
        return;
    }
    Require(song.seconds >= 0.0 && song.seconds <= 86400.0, "a song has a length");
    // A message and the note-off that it may bring along take two bytes of the file or more.
    Require(song.messages.size() <= size, "there are no more messages than there is room for");
    Require(std::ranges::is_sorted(song.messages, {}, &MidiMessage::seconds), "messages are in order of time");
    for (MidiMessage const& message : song.messages) {
        Require(message.seconds >= 0.0 && message.seconds <= song.seconds, "messages are within the song");
        Require(message.status >= 0x80 && message.status < 0xF0, "messages are those of channels");
        Require(message.data1 < 0x80 && message.data2 < 0x80, "data have seven bits");
    }
}

} // namespace vynfuzz
