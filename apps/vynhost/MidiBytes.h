#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vynhost {

/// The bytes of a MIDI file, or of a chunk in it, taken from the front to the end. Numbers are big-endian. Whatever
/// would go beyond the end throws std::runtime_error, as does Fail, with the place in the file. The bytes belong to the
/// caller.
class MidiBytes {
public:
    /// @param place  of the first byte in the file
    /// [any-thread]
    explicit MidiBytes(std::string_view bytes, std::size_t place = 0) : mBytes(bytes), mPlace(place) {}

    /// [any-thread]
    bool IsAtEnd() const noexcept { return mBytes.empty(); }
    /// How many bytes are left.
    /// [any-thread]
    std::size_t GetLeft() const noexcept { return mBytes.size(); }

    /// The next byte, which stays.
    /// [any-thread]
    std::uint8_t Peek() const;
    /// [any-thread]
    std::uint8_t TakeByte();
    /// @param bytes  1..4
    /// [any-thread]
    std::uint32_t TakeNumber(int bytes);
    /// A number of variable length: seven bits a byte, at most four bytes.
    /// [any-thread]
    std::uint32_t TakeVariable();
    /// The next `count` bytes.
    /// [any-thread]
    MidiBytes Take(std::size_t count);

    /// [any-thread]
    std::string_view GetText() const noexcept { return mBytes; }

    /// [any-thread]
    [[noreturn]] void Fail(std::string const& reason) const;

private:
    std::string_view mBytes;
    std::size_t mPlace;
};

} // namespace vynhost
