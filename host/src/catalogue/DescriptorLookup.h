#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost {

/// The descriptor of an ID as it stands, or behind "4:", or behind "2:": IDs were once stored without the number of
/// their technology. Null when there is none.
/// [main-thread]
boost::intrusive_ptr<AudioFilterDescriptor> FindDescriptorForLooseID(vyncore::UString const& id);

/// The first offered descriptor whose ID is the same up to its first blank as this ID up to its own: the number of a
/// VST 2.x effect whose name has changed since. Null when there is none, and for an ID that holds no blank or doesn't
/// begin with "2".
/// [main-thread]
boost::intrusive_ptr<AudioFilterDescriptor> FindRenamedDescriptor(vyncore::UString const& id);

} // namespace vynaudiofilterhost
