#pragma once

#include "vyncore/Export.h"
#include "vyncore/strings/UString.h"

#include <cstdint>

namespace vynaudiofilterhost {

/// What kind of filter a filter is. The numbers stand in stored descriptors, so they never change.
/// 28 to 53 count as internal too; any other number is kept as it is and has no name.
enum AudioFilterCategory : std::int32_t {
    kCategoryNone = 0,
    kCategoryEffect = 1,
    kCategorySynth = 2,
    kCategoryAnalysis = 3,
    kCategoryMastering = 4,
    kCategorySpacializer = 5,
    kCategoryRoomFx = 6,
    kCategorySurroundFx = 7,
    kCategoryRestoration = 8,
    kCategoryOfflineProcess = 9,
    kCategoryGenerator = 10,
    kCategoryVst3Analyzer = 11,
    kCategoryVst3Delay = 12,
    kCategoryVst3Distortion = 13,
    kCategoryVst3Dynamics = 14,
    kCategoryVst3EQ = 15,
    kCategoryVst3Filter = 16,
    kCategoryVst3Instrument = 17,
    kCategoryVst3Spatial = 18,
    kCategoryVst3Generator = 19,
    kCategoryVst3Mastering = 20,
    kCategoryVst3Modulation = 21,
    kCategoryVst3PitchShift = 22,
    kCategoryVst3Restoration = 23,
    kCategoryVst3Reverb = 24,
    kCategoryVst3Surround = 25,
    kCategoryVst3Tools = 26,
    /// A plug-in that the application has scanned as one of its own.
    kCategoryInternal = 27,
};

/// The name that is the same in every language, for usage logging: "Vst3EQ". "Internal" for 27 to 53, the number in
/// decimal for one that isn't a category.
/// [any-thread]
VYN_API vyncore::UTF8String AudioFilterCategoryInvariantName(AudioFilterCategory category);

/// The name to show, in the user's language. Empty for a category that isn't shown: none, internal and unknown ones.
/// [main-thread]
VYN_API vyncore::UString AudioFilterCategoryDisplayName(AudioFilterCategory category);

} // namespace vynaudiofilterhost
