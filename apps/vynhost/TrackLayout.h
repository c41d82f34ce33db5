#pragma once

#include "vynhost/AudioFormat.h"

#include "vynmediatypes/AudioChannelLayout.h"

#include <string>

/// Channel layouts of tracks and files.
namespace vynhost {

/// The names that LayoutOfName knows: "mono, stereo, 5.1, 7.1".
/// [any-thread]
std::string ListLayoutNames();

/// The layout that a user names. Throws CommandError (wrong usage) for a name that isn't one.
/// [any-thread]
vynmediatypes::AudioChannelLayout LayoutOfName(std::string const& name);

/// The usual layout of so many channels, empty when there is none. The order of the channels is the one that both WAV
/// files and plug-ins use.
/// [any-thread]
vynmediatypes::AudioChannelLayout UsualLayout(int channels);

/// The layout of a file's channels: the usual one of their number, or else channel by channel what the file says of
/// its speakers, the label of the mono channel where it says nothing.
/// [any-thread]
vynmediatypes::AudioChannelLayout LayoutOfFile(AudioFormat const& format);

} // namespace vynhost
