#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <array>
#include <compare>
#include <cstdint>
#include <iosfwd>

namespace vyncore::utility {

/// A globally unique identifier, 16 bytes in their four customary parts. A value; the default is all zeros.
class VYN_API Guid {
public:
    /// [any-thread]
    constexpr Guid() = default;
    constexpr Guid(std::uint32_t first, std::uint16_t second, std::uint16_t third,
                   std::array<std::uint8_t, 8> const& rest)
        : mFirst(first), mSecond(second), mThird(third), mRest(rest) {}

    /// The same as StringToGUID.
    /// [any-thread]
    explicit Guid(UString const& text);

    /// Reads the form of AsString, in braces or without, letters in either case. Any other text gives zeros.
    /// [any-thread]
    static Guid StringToGUID(UString const& text);

    /// Such as EB0FED8B-7841-4F2B-A655-D8CDDEA9F465.
    /// [any-thread]
    UString AsString() const;

    /// By the parts, the first before the others.
    /// [any-thread]
    friend auto operator<=>(Guid const&, Guid const&) = default; // NOLINT(modernize-use-nullptr)

private:
    std::uint32_t mFirst = 0;
    std::uint16_t mSecond = 0;
    std::uint16_t mThird = 0;
    std::array<std::uint8_t, 8> mRest{};
};

/// Writes the form of AsString.
/// [any-thread]
VYN_API std::ostream& operator<<(std::ostream& stream, Guid const& guid);

} // namespace vyncore::utility
