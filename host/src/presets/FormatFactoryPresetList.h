#pragma once

#include "vynaudiofilterhost/presets/PresetList.h"
#include "vyncore/Export.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace vynaudiofilterhost {

/// A developer's aid: turns presets that were made by hand into source text for a filter's table of its own presets,
/// and hands it, in one piece, to vyncore::debug::DebugTrace. The first preset that is a parameter list says how many
/// parameters there are and of which version; a row that doesn't fit, or is of another type, is left to be filled by
/// hand. Says nothing when the list is null or holds no such preset. The lines reach a trace sink as they are; standard
/// error, which stands in for one, shows them as a single line. Names and values stand in the text as they are.
/// [main-thread]
VYN_API void FormatFactoryPresetList(boost::intrusive_ptr<PresetList> list);

} // namespace vynaudiofilterhost
