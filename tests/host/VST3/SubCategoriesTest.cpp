#include "vynaudiofilterhost/VST3/src/VST3SubCategories.h"

#include <gtest/gtest.h>

using namespace vynaudiofilterhost;
using namespace vynaudiofilterhost::vst3;

TEST(VST3SubCategoriesTest, FirstRowOfTheTableDecides) {
    struct {
        char const* text;
        int category;
        bool instrument;
    } const kCases[] = {
        // clang-format off
        {"Fx|Analyzer", 11, false}, {"Fx|Delay|Reverb", 12, false}, {"Fx|Reverb|Delay", 12, false},
        {"Fx|Reverb", 24, false}, {"Fx|Dynamics|Fx", 14, false}, {"Fx|Mastering", 20, false},
        {"Fx|Restoration", 23, false}, {"Fx|Generator", 19, false}, {"Fx|Spatial", 18, false},
        {"Fx|Distortion", 13, false}, {"Fx|EQ", 15, false}, {"Fx|Filter", 16, false}, {"Fx|Modulation", 21, false},
        {"Fx|Pitch Shift", 22, false}, {"Fx|Surround", 25, false}, {"Fx|Tools", 26, false}, {"Fx|Custom", 1, false},
        {"Instrument|Synth", 17, true}, {"Instrument|Fx", 1, false}, {"Spatial", 0, false}, {"", 0, false},
        {"OnlyRT|Fx|EQ|x", 15, false}, {"fx|eq", 0, false},
        // clang-format on
    };
    for (auto const& testCase : kCases) {
        SubCategoryVerdict const verdict = CategoryFromSubCategories(testCase.text, false);
        EXPECT_EQ(static_cast<int>(verdict.category), testCase.category) << testCase.text;
        EXPECT_EQ(verdict.instrument, testCase.instrument) << testCase.text;
        EXPECT_EQ(CategoryFromSubCategories(testCase.text, true), (SubCategoryVerdict{kCategoryInternal, false}));
    }
}
