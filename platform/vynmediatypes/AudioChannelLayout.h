#pragma once

#include "vyncore/allocator/STLAllocator.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioChannelDescription.h"

#include <cstdint>
#include <vector>

/// Channel layouts: the channels of a bus or of a track, in order, and their texts.
namespace vynmediatypes {

using AudioChannelLayout =
    std::vector<AudioChannelDescription, vyncore::allocator::STLAllocator<AudioChannelDescription>>;

/// One channel, mono.
/// [any-thread]
VYN_API AudioChannelLayout CreateMonoChannelLayout();

/// Left, right.
/// [any-thread]
VYN_API AudioChannelLayout CreateStereoChannelLayout();

/// Left, right, center, low frequency, left surround, right surround.
/// [any-thread]
VYN_API AudioChannelLayout CreateSurround51ChannelLayout();

/// Left, right, center, low frequency, left surround, right surround, side left, side right.
/// [any-thread]
VYN_API AudioChannelLayout CreateSurround71ChannelLayout();

/// The short text of a label, such as "L" or "LFE". A label without a meaning gives its number.
/// [any-thread]
VYN_API vyncore::UString AudioChannelDescriptionName(std::int32_t label);

/// The text of a layout: "Mono", "Stereo", "5.1" and the like for those with a name, and otherwise the short texts of
/// its channels with blanks between them, such as "L R C". Empty for an empty layout. [any-thread]
VYN_API vyncore::UString AudioChannelLayoutDescription(AudioChannelLayout const& layout);

} // namespace vynmediatypes
