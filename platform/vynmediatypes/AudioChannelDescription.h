#pragma once

#include "vyncore/Export.h"

#include <cstdint>

namespace vynmediatypes {

/// Which channel of a layout a channel is: a label, such as 100 for left. A plain value. Any number is a label; those
/// named here are the ones that have a meaning.
class VYN_API AudioChannelDescription {
public:
    enum Label : std::int32_t {
        kMono = 0,
        kLeft = 100,
        kRight = 101,
        kCenter = 102,
        kLowFrequency = 103,
        kLeftSurround = 104,
        kRightSurround = 105,
        kCenterSurround = 106,
        kLeftOfCenter = 107,
        kRightOfCenter = 108,
        kSideLeft = 109,
        kSideRight = 110,
        kTopCenter = 111,
        kTopFrontLeft = 112,
        kTopFrontRight = 113,
        kTopFrontCenter = 114,
        kTopRearLeft = 115,
        kTopRearRight = 116,
        kTopRearCenter = 117,
        kTopSideLeft = 127,
        kTopSideRight = 128,
        kLeftOfCenterSurround = 129,
        kRightOfCenterSurround = 130,
        kLowFrequency2 = 131,
        kAmbisonic0 = 134,
        kAmbisonic1 = 135,
        kAmbisonic2 = 136,
        kAmbisonic3 = 137,
        kBottomFrontLeft = 138,
        kBottomFrontCenter = 139,
        kBottomFrontRight = 140,
        kProximityLeft = 141,
        kProximityRight = 142,
        kAmbisonic = 143
    };

    /// The mono channel.
    /// [any-thread]
    constexpr AudioChannelDescription() noexcept = default;

    /// [any-thread]
    constexpr explicit AudioChannelDescription(std::int32_t label) noexcept : mLabel(label) {}

    /// [any-thread]
    constexpr std::int32_t GetLabel() const noexcept { return mLabel; }

    /// [any-thread]
    friend constexpr bool operator==(AudioChannelDescription, AudioChannelDescription) noexcept = default;

private:
    std::int32_t mLabel = kMono;
};

} // namespace vynmediatypes
