#include "vynhost/MidiSong.h"

#include <array>
#include <cstddef>

namespace vynhost {

namespace {

constexpr std::uint8_t kNoteOff = 0x80;
constexpr std::uint8_t kNoteOn = 0x90;
constexpr std::uint8_t kControlChange = 0xB0;
constexpr std::uint8_t kUsualReleaseVelocity = 64;

// Both keep notes sounding that are off: sustain and sostenuto.
constexpr std::array<std::uint8_t, 2> kPedals{64, 66};
constexpr std::uint8_t kPedalDown = 64;

// What is held on one channel.
struct Held {
    std::array<std::uint32_t, 128> notes{};      ///< how often each is on
    std::array<std::uint8_t, 128> controllers{}; ///< the last value of each
};

void Follow(Held& held, MidiMessage const& message) {
    auto const kind = static_cast<std::uint8_t>(message.status & 0xF0);
    std::uint32_t& notes = held.notes[message.data1];
    if (kind == kNoteOn)
        ++notes;
    if (kind == kNoteOff && notes > 0)
        --notes;
    if (kind == kControlChange)
        held.controllers[message.data1] = message.data2;
}

void Release(Held const& held, std::uint8_t channel, MidiSong& song) {
    for (unsigned key = 0; key < held.notes.size(); ++key)
        song.messages.insert(song.messages.end(), held.notes[key],
                             {song.seconds, static_cast<std::uint8_t>(kNoteOff | channel),
                              static_cast<std::uint8_t>(key), kUsualReleaseVelocity});
    for (std::uint8_t const pedal : kPedals) {
        if (held.controllers[pedal] >= kPedalDown)
            song.messages.push_back({song.seconds, static_cast<std::uint8_t>(kControlChange | channel), pedal, 0});
    }
}

} // namespace

void ReleaseHeld(MidiSong& song) {
    std::array<Held, 16> channels;
    for (MidiMessage const& message : song.messages)
        Follow(channels[message.status & 0x0F], message);
    for (unsigned channel = 0; channel < channels.size(); ++channel)
        Release(channels[channel], static_cast<std::uint8_t>(channel), song);
}

} // namespace vynhost
