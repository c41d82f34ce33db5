#pragma once

#include "vynaudiofilterhost/VST3/src/VST3StateChunk.h"

#include "pluginterfaces/base/funknown.h"

#include <span>
#include <string>

/// The file in which hosts of VST3 plug-ins hand presets to each other, ".vstpreset": the public form of the VST3
/// documentation ("Preset Format"). Numbers are little-endian. A header of 48 bytes: "VST3", the version 1 (32 bits),
/// the class ID as 32 hexadecimal digits, the place of the list (64 bits). Then the content of the chunks. Then the
/// list: "List", the number of entries (32 bits), and for each its name of four letters, its place in the file and its
/// size (64 bits each). "Comp" is the component's state and "Cont" the controller's.
namespace vynaudiofilterhost::vst3 {

/// What a preset file holds; the states are parts of the file's bytes.
struct VST3PresetContent {
    std::string classID; ///< 32 hexadecimal digits, upper case
    VST3States states;
};

/// Whether the bytes begin as a preset file does.
/// [any-thread]
bool IsVST3PresetFile(std::span<unsigned char const> bytes);

/// Takes a preset file apart. Null, or what is wrong with it, for a person; `content` says nothing then. Chunks of
/// other names are passed over; of several of one name the first counts.
/// [any-thread]
char const* ParseVST3PresetFile(std::span<unsigned char const> bytes, VST3PresetContent& content);

/// The bytes of a preset file. The component's state is always there, since some hosts insist on it; a controller's
/// that is empty is left out.
/// [any-thread]
ChunkBytes MakeVST3PresetFile(VST3PresetContent const& content);

/// A class ID in the form that preset files hold: the one of the system's own VST3 hosts, which differs from the
/// library's own text on systems where IDs are not laid out as on Windows.
/// [any-thread]
std::string PresetClassID(Steinberg::TUID const classID);

} // namespace vynaudiofilterhost::vst3
