#include "vynaudiofilterhost/VST3/src/VST3SubCategories.h"

namespace vynaudiofilterhost::vst3 {

namespace {

struct Row {
    std::string_view text;
    AudioFilterCategory category;
};

// The first row whose text occurs decides, which is why this isn't the order of the numbers.
constexpr Row kRows[] = {
    {"Fx|Analyzer", kCategoryVst3Analyzer},
    {"Fx|Delay", kCategoryVst3Delay},
    {"Fx|Reverb", kCategoryVst3Reverb},
    {"Fx|Dynamics", kCategoryVst3Dynamics},
    {"Fx|Mastering", kCategoryVst3Mastering},
    {"Fx|Restoration", kCategoryVst3Restoration},
    {"Fx|Generator", kCategoryVst3Generator},
    {"Fx|Spatial", kCategoryVst3Spatial},
    {"Fx|Distortion", kCategoryVst3Distortion},
    {"Fx|EQ", kCategoryVst3EQ},
    {"Fx|Filter", kCategoryVst3Filter},
    {"Fx|Modulation", kCategoryVst3Modulation},
    {"Fx|Pitch Shift", kCategoryVst3PitchShift},
    {"Fx|Surround", kCategoryVst3Surround},
    {"Fx|Tools", kCategoryVst3Tools},
    {"Fx", kCategoryEffect},
    {"Instrument", kCategoryVst3Instrument},
};

// A class may state its sub-categories in any order, "Fx|Reverb|Delay" as well as "Fx|Delay|Reverb": the row's pieces
// count, and the order of the rows decides.
bool HoldsAllPieces(std::string_view text, std::string_view row) {
    for (;;) {
        std::size_t const bar = row.find('|');
        if (text.find(row.substr(0, bar)) == std::string_view::npos)
            return false;
        if (bar == std::string_view::npos)
            return true;
        row.remove_prefix(bar + 1);
    }
}

} // namespace

SubCategoryVerdict CategoryFromSubCategories(std::string_view subCategories, bool internalFilter) {
    if (internalFilter)
        return {kCategoryInternal, false};
    for (Row const& row : kRows) {
        if (HoldsAllPieces(subCategories, row.text))
            return {row.category, row.category == kCategoryVst3Instrument};
    }
    return {kCategoryNone, false};
}

} // namespace vynaudiofilterhost::vst3
