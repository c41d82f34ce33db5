#include "vynhost/MidiBytes.h"

#include <stdexcept>

namespace vynhost {

std::uint8_t MidiBytes::Peek() const {
    if (IsAtEnd())
        Fail("something is missing at the end");
    return static_cast<std::uint8_t>(mBytes.front());
}

std::uint8_t MidiBytes::TakeByte() {
    std::uint8_t const byte = Peek();
    mBytes.remove_prefix(1);
    ++mPlace;
    return byte;
}

std::uint32_t MidiBytes::TakeNumber(int bytes) {
    std::uint32_t number = 0;
    for (int i = 0; i < bytes; ++i)
        number = number << 8 | TakeByte();
    return number;
}

std::uint32_t MidiBytes::TakeVariable() {
    constexpr int kMostBytes = 4;
    std::uint32_t number = 0;
    for (int i = 0; i < kMostBytes; ++i) {
        std::uint8_t const byte = TakeByte();
        number = number << 7 | (byte & 0x7Fu);
        if (byte < 0x80)
            return number;
    }
    Fail("a number has more than four bytes");
}

MidiBytes MidiBytes::Take(std::size_t count) {
    if (count > GetLeft())
        Fail(std::to_string(count) + " bytes are announced and " + std::to_string(GetLeft()) + " are left");
    MidiBytes const taken(mBytes.substr(0, count), mPlace);
    mBytes.remove_prefix(count);
    mPlace += count;
    return taken;
}

void MidiBytes::Fail(std::string const& reason) const {
    throw std::runtime_error("byte " + std::to_string(mPlace) + ": " + reason);
}

} // namespace vynhost
