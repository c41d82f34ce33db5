#include "vynaudiofilterhost/catalogue/AudioFilterCategory.h"

#include "host/HostTest.h"

namespace {

using namespace vyntest;

TEST(AudioFilterCategoryTest, InvariantAndShownNamesGoTheirOwnWays) {
    struct {
        int category;
        char const* invariant;
        char16_t const* shown;
    } const cases[] = {
        {-1, "-1", u""},
        {0, "None", u""},
        {1, "Effect", u"Effect"},
        {9, "OfflineProcess", u"Offline"},
        {10, "Generator", u"Generator"},
        {11, "Vst3Analyzer", u"Analyzer"},
        {22, "Vst3PitchShift", u"Pitch Shift"},
        {26, "Vst3Tools", u"Tools"},
        {27, "Internal", u""},
        {53, "Internal", u""},
        {54, "54", u""},
    };
    for (auto const& [number, invariant, shown] : cases) {
        auto const category = static_cast<AudioFilterCategory>(number);
        EXPECT_EQ(AudioFilterCategoryInvariantName(category), invariant);
        EXPECT_EQ(AudioFilterCategoryDisplayName(category), shown);
    }
}

} // namespace
