#include "vynmediatypes/AudioBusDescription.h"

#include <gtest/gtest.h>

namespace {

using namespace vynmediatypes;

AudioChannelLayout Layout(std::vector<int> const& labels) {
    AudioChannelLayout layout;
    for (int const label : labels)
        layout.emplace_back(label);
    return layout;
}

TEST(AudioBusDescriptionTest, CommonBusesHaveTheirLabelsAndAllOfABusCountsForEquality) {
    auto const mono = AudioBusDescription::CreateMono(u"Key", AudioBusDescription::kTypeSideChain);
    EXPECT_EQ(mono.GetName(), u"Key");
    EXPECT_EQ(mono.GetType(), AudioBusDescription::kTypeSideChain);
    EXPECT_EQ(mono.GetLayout(), Layout({0}));
    auto const surround = AudioBusDescription::CreateSurround51(u"Main", AudioBusDescription::kTypeMain);
    EXPECT_EQ(surround.GetLayout(), Layout({100, 101, 102, 103, 104, 105}));
    EXPECT_EQ(surround.GetChannelCount(), 6);
    auto const stereo = AudioBusDescription::CreateStereo(u"Main", AudioBusDescription::kTypeMain);
    EXPECT_EQ(stereo.GetLayout(), Layout({100, 101}));
    AudioBusDescription other = stereo;
    EXPECT_EQ(other, stereo);
    other.SetType(AudioBusDescription::kTypeSideChain);
    EXPECT_NE(other, stereo);
    other = stereo;
    other.SetName(u"Aux");
    EXPECT_NE(other, stereo);
    other = stereo;
    other.SetLayout(Layout({101, 100}));
    EXPECT_NE(other, stereo);
}

TEST(AudioChannelLayoutTest, ALayoutIsCalledByItsNameOrByItsChannels) {
    struct {
        std::vector<int> labels;
        char16_t const* text;
    } const cases[] = {
        {{}, u""},
        {{0}, u"Mono"},
        {{100, 101}, u"Stereo"},
        {{101, 100}, u"R L"},
        {{100, 101, 102, 103, 104, 105}, u"5.1"},
        {{100, 101, 102, 103, 104, 105, 109, 110}, u"7.1"},
        {{100, 101, 102}, u"L R C"},
        {{100, 101, 102, 103, 104}, u"L R C LFE Ls"},
        {{0, 0}, u"M M"},
        {{106, 113, 114, 115, 117, 131, 137, 143}, u"Cs Tfr Tfc Trl Trc LFE2 ACN3 Ambisonic"},
        {{118, -7}, u"118 -7"},
    };
    for (auto const& tried : cases)
        EXPECT_EQ(AudioChannelLayoutDescription(Layout(tried.labels)), tried.text);
}

} // namespace
