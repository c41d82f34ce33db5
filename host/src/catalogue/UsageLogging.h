#pragma once

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"
#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost {

/// Reports to the application's usage logger (vyncore::config::UsageLogger) that a filter was used: who made it, what
/// kind it is, whether it is enabled. Called by the application alone. Nothing for a null pointer, without a logger,
/// and when the logger doesn't want the record. Throws what the logger throws.
/// @param usageContext   what it was used for; an empty one isn't reported
/// @param groupArgument  handed on to the logger as it is
/// [main-thread]
VYN_API void LogAudioFilterUsage(boost::intrusive_ptr<AudioFilterDescriptor> const& descriptor,
                                 vyncore::UTF8String const& usageContext, vyncore::UTF8String const& groupArgument);

/// The same for the catalogue's record of a living filter; nothing when the catalogue has none.
/// [main-thread]
VYN_API void LogAudioFilterUsage(boost::intrusive_ptr<AudioFilter> const& filter,
                                 vyncore::UTF8String const& usageContext, vyncore::UTF8String const& groupArgument);

} // namespace vynaudiofilterhost
