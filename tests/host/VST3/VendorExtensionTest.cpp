#include "vynaudiofilterhost/VST3/src/LanguageCode.h"
#include "vynaudiofilterhost/VST3/src/VST3VendorExtension.h"

#include "pluginterfaces/gui/iplugview.h"

#include <gtest/gtest.h>
#include <string>

using namespace vynaudiofilterhost::vst3;

namespace {

std::string AsText(Steinberg::FUID const& id) {
    Steinberg::FUID::String text;
    id.toString(text);
    return text;
}

} // namespace

TEST(VST3VendorExtensionTest, InterfaceIDsAreThoseThatPlugInsAskFor) {
    EXPECT_EQ(AsText(IVST3TolveVendorSpecificHost::iid), "7FCBCFCE2862476ABFF2219BCA70789D");
    EXPECT_EQ(AsText(IVST3TolveVendorSpecificComponent::iid), "872EE79061B243A28DBA33C1D9262D3E");
    EXPECT_EQ(AsText(IVST3TolveVendorSpecificController::iid), "3C8A2F2514114BF7851B13CB9C55AC92");
    EXPECT_EQ(AsText(IVST3VirtualAudioFilterProcessor::iid), "F83AD87125F94500903A25AA46A3848C");
    EXPECT_EQ(AsText(Steinberg::IPlugView::iid), "5BC32507D06049EAA6151B522B755B29") << "the same rule as theirs";
}

TEST(VST3VendorExtensionTest, LanguageFollowsTheWholeLocale) {
    struct {
        char const* locale;
        int code;
    } const kCases[] = {{"de_DE", 1}, {"fr_FR", 2},   {"ja_JP", 3}, {"es_ES", 4}, {"it_IT", 5},
                        {"ko_KR", 6}, {"zh_CN", 7},   {"en_US", 0}, {"en_GB", 0}, {"de_AT", 0},
                        {"de", 0},    {"de_DE@x", 0}, {"", 0},      {nullptr, 0}};
    for (auto const& testCase : kCases)
        EXPECT_EQ(LanguageCodeForLocale(testCase.locale), testCase.code);
}
