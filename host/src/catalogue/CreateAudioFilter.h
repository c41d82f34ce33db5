#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost::utility {

/// A new, suspended filter of that unique ID, or of an older form of it: without the technology's number in front, or,
/// for VST 2.x, with a name that the effect has given up since. Null when the catalogue has no such filter, when it or
/// its plug-in's module is disabled, or when it can't be made. A module of which the inventory knows nothing is
/// enabled.
/// [main-thread]
VYN_API boost::intrusive_ptr<AudioFilter> CreateAudioFilter(vyncore::UString const& id);

} // namespace vynaudiofilterhost::utility
