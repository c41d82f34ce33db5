#pragma once

#include <cstddef>
#include <cstdint>

/// What is fuzzed: each reads one input of any bytes and ends the process when what must hold doesn't. The fuzzing
/// programs call one of them each; the tests run all seeds through them.
namespace vynfuzz {

/// Bytes as text.
void FuzzBinaryText(std::uint8_t const* data, std::size_t size);

/// A bus configuration as JSON.
void FuzzBusConfiguration(std::uint8_t const* data, std::size_t size);

/// A stored channel map, as words: the filter's channels, the target's channels, 1 to fill what is not mapped, and then
/// any number of values: "C 0 count", "S k source" or "D k target".
void FuzzChannelMap(std::uint8_t const* data, std::size_t size);

/// The text of a property list.
void FuzzPropertyList(std::uint8_t const* data, std::size_t size);

/// The chunk of a VST3 plug-in's preset.
void FuzzStateChunk(std::uint8_t const* data, std::size_t size);

/// The file of the inventory's settings.
void FuzzInventorySettings(std::uint8_t const* data, std::size_t size);

/// A MIDI file.
void FuzzMidiFile(std::uint8_t const* data, std::size_t size);

/// The file of the dynamic ban list.
void FuzzBanList(std::uint8_t const* data, std::size_t size);

/// The file of the static ban list.
void FuzzStaticBanList(std::uint8_t const* data, std::size_t size);

/// A preset file of a VST3 plug-in.
void FuzzPresetFile(std::uint8_t const* data, std::size_t size);

/// A preset file of a VST 2.x plug-in.
void FuzzVSTPresetFile(std::uint8_t const* data, std::size_t size);

} // namespace vynfuzz
