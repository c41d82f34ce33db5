#pragma once

#include <limits>
#include <type_traits>

namespace vyncore::utility {

/// A set of bits in one unsigned word, such as one silence flag per channel.
/// A bit number counts modulo the width of the word: in a set of 64, bit 64 is bit 0.
template <class Word>
class Flags {
    static_assert(std::is_unsigned_v<Word>);

public:
    constexpr Flags() noexcept = default;
    constexpr explicit Flags(Word bits) noexcept : mBits(bits) {}

    constexpr bool Test(unsigned bit) const noexcept { return (mBits & Mask(bit)) != 0; }
    constexpr void Set(unsigned bit) noexcept { mBits = static_cast<Word>(mBits | Mask(bit)); }
    constexpr void Clear(unsigned bit) noexcept { mBits = static_cast<Word>(mBits & ~Mask(bit)); }
    constexpr void Assign(unsigned bit, bool value) noexcept { value ? Set(bit) : Clear(bit); }
    constexpr void SetAll() noexcept { mBits = std::numeric_limits<Word>::max(); }
    constexpr void ClearAll() noexcept { mBits = 0; }
    constexpr Word GetBits() const noexcept { return mBits; }

    friend constexpr bool operator==(Flags, Flags) noexcept = default;

private:
    static constexpr Word Mask(unsigned bit) noexcept {
        return static_cast<Word>(Word{1} << (bit % std::numeric_limits<Word>::digits));
    }

    Word mBits = 0;
};

} // namespace vyncore::utility
