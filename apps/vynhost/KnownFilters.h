#pragma once

#include "vynaudiofilterhost/catalogue/AudioFilterDescriptor.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <string>
#include <vector>

namespace vynhost {

using KnownFilters = std::vector<boost::intrusive_ptr<vynaudiofilterhost::AudioFilterDescriptor>>;

/// The filters of the library's catalogue that come from plug-ins, by name and then by unique ID.
/// [main-thread]
KnownFilters ListKnownFilters();

/// Those among them that have this unique ID, else those with this ID in any letter case, with or without the
/// technology in front, else those of this name, else those of this name in any letter case.
/// [main-thread]
KnownFilters FindKnownFilters(std::string const& text);

/// The filters with their IDs and modules, as a choice for a person, on one line.
/// [main-thread]
std::string TellFilters(KnownFilters const& filters);

/// Throws CommandError: the text that a user gave could be any of these.
/// [main-thread]
[[noreturn]] void ThrowAmbiguous(std::string const& text, KnownFilters const& filters);

/// Whether the filter may be made: it and its module are enabled.
/// [main-thread]
bool IsEnabled(vynaudiofilterhost::AudioFilterDescriptor const& filter);

} // namespace vynhost
