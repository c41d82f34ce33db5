#pragma once

#include <concepts>
#include <cstddef>
#include <span>

namespace vynaudiofilterhost::vst {

/// The number at the head of `bytes`, of which there must be enough, highest byte first.
/// [any-thread]
template <std::unsigned_integral Number>
Number ReadBigEndian(std::span<unsigned char const> bytes) {
    Number number = 0;
    for (std::size_t place = 0; place < sizeof number; ++place)
        number = static_cast<Number>(number << 8 | bytes[place]);
    return number;
}

/// [any-thread]
template <std::unsigned_integral Number, class Bytes>
void AppendBigEndian(Bytes& bytes, Number number) {
    for (std::size_t place = sizeof number; place-- > 0;)
        bytes.push_back(static_cast<unsigned char>(number >> (8 * place)));
}

} // namespace vynaudiofilterhost::vst
