#pragma once

#include "vyncore/strings/UString.h"

namespace vynaudiofilterhost::vst {

/// The unique ID of an effect: "2:", the effect's number in decimal, a blank, and the title of the module file. So two
/// files may hold the same number, and the ID tells which file to load and which effect to ask it for.
/// [any-thread]
vyncore::UString MakeVSTUniqueID(unsigned number, vyncore::UString const& modulePath);

/// The number in a unique ID, with or without what stands before its colon; 0 when there is none.
/// [any-thread]
void ParseVSTUniqueID(vyncore::UString const& id, unsigned& number);

} // namespace vynaudiofilterhost::vst
