#pragma once

#include "vynhost/MidiSong.h"

#include <string>
#include <string_view>

namespace vynhost {

/// The song in the bytes of a Standard MIDI File of format 0 or 1: the channel messages of all tracks in order of time,
/// those of one time in order of their tracks, with what is still held at the end released there. Throws
/// std::runtime_error, with the place, for whatever is no such file.
/// [any-thread]
MidiSong ParseMidiFile(std::string_view bytes);

/// The same of a file of at most 64 MiB. Throws CommandError, with the file.
/// [main-thread]
MidiSong ReadMidiFile(std::string const& path);

} // namespace vynhost
