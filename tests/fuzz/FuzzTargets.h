#pragma once

#include <cstddef>
#include <cstdint>

/// What is fuzzed: each reads one input of any bytes and ends the process when what must hold doesn't. The fuzzing
/// programs call one of them each; the tests run all seeds through them.
namespace vynfuzz {

using Target = void(std::uint8_t const* data, std::size_t size);

Target FuzzBanList;          ///< the file of the dynamic ban list
Target FuzzBinaryText;       ///< bytes as text
Target FuzzBusConfiguration; ///< a bus configuration as JSON
/// A stored channel map, as words: the filter's channels, the target's channels, 1 to fill what is not mapped, and then
/// any number of values: "C 0 count", "S k source" or "D k target".
Target FuzzChannelMap;
Target FuzzInventorySettings; ///< the file of the inventory's settings
Target FuzzMidiFile;
Target FuzzPresetFile;    ///< of a VST3 plug-in
Target FuzzPropertyList;  ///< the text of one
Target FuzzStateChunk;    ///< of a VST3 plug-in's preset
Target FuzzStaticBanList; ///< the file of the static ban list
Target FuzzVSTPresetFile; ///< of a VST 2.x plug-in

} // namespace vynfuzz
