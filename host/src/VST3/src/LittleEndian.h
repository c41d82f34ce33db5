#pragma once

#include <concepts>
#include <cstddef>
#include <span>

namespace vynaudiofilterhost::vst3 {

/// The number at the head of `bytes`, of which there must be enough, lowest byte first.
/// [any-thread]
template <std::unsigned_integral Number>
Number ReadLittleEndian(std::span<unsigned char const> bytes) {
    Number number = 0;
    for (std::size_t place = sizeof number; place-- > 0;)
        number = static_cast<Number>(number << 8 | bytes[place]);
    return number;
}

/// [any-thread]
template <std::unsigned_integral Number, class Bytes>
void AppendLittleEndian(Bytes& bytes, Number number) {
    for (std::size_t place = 0; place < sizeof number; ++place)
        bytes.push_back(static_cast<unsigned char>(number >> (8 * place)));
}

} // namespace vynaudiofilterhost::vst3
