#pragma once

#include "vyncore/strings/UString.h"

#include "pluginterfaces/base/funknown.h"

/// The text form of a class ID: four words in lower-case hexadecimal with a blank between them, the first padded to
/// eight digits. Its order of bytes is the same on every system, unlike that of the interfaces' own conversions,
/// because the text stands in stored files.
namespace vynaudiofilterhost::vst3 {

/// The four words alone, such as "0a1b2c3d 5e6f 708090a0 b0c0d0e0".
/// [any-thread]
vyncore::UString MakeFilterClassIDText(Steinberg::TUID const& classID);

/// The unique ID of the class's filter in the catalogue: "3:" and the four words.
/// [any-thread]
vyncore::UString FormatVST3ClassID(Steinberg::TUID const& classID);

/// Reads either form back. Words from the first that doesn't parse on are 0.
/// [any-thread]
void ParseVST3ClassID(vyncore::UString const& text, Steinberg::TUID& classID);

} // namespace vynaudiofilterhost::vst3
