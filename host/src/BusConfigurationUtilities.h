#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"
#include "vynmediatypes/AudioBusDescription.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <vector>

namespace vynaudiofilterhost {
class AudioFilter;
}

/// Bus configurations as JSON text (docs/formats.md).
namespace vynaudiofilterhost::utility {

/// [any-thread]
VYN_API vyncore::UTF8String
ConvertBusConfigurationToJSON(std::vector<vynmediatypes::AudioBusDescription> const& inputs,
                              std::vector<vynmediatypes::AudioBusDescription> const& outputs);

/// Replaces both lists by those of the text. Text that isn't JSON gives two empty lists, and what is missing in it an
/// empty list, text or layout, or 0. Throws boost::bad_any_cast for a value of the wrong kind; the lists are as they
/// were then.
/// [any-thread]
VYN_API void ConvertBusConfigurationFromJSON(vyncore::UTF8String const& text,
                                             std::vector<vynmediatypes::AudioBusDescription>& inputs,
                                             std::vector<vynmediatypes::AudioBusDescription>& outputs);

/// The buses that the filter has; none for a null filter.
/// [main-thread]
VYN_API vyncore::UTF8String GetAudioFilterBusConfig(boost::intrusive_ptr<AudioFilter> const& filter);

/// Asks the filter for the buses of the text (AudioFilter::RequestBusConfiguration). Throws as
/// ConvertBusConfigurationFromJSON does; the filter is left alone then. A null filter is left alone, too.
/// [main-thread & suspended]
VYN_API void SetAudioFilterBusConfig(vyncore::UTF8String const& text, boost::intrusive_ptr<AudioFilter> const& filter);

} // namespace vynaudiofilterhost::utility
