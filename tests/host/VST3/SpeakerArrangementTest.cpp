#include "vynaudiofilterhost/VST3/src/VST3SpeakerArrangement.h"

#include "host/HostTest.h"
#include "vynaudiofilterhost/VST3/src/VST3SpeakerTables.h"

#include "pluginterfaces/vst/vstspeaker.h"

#include <bit>
#include <cstdint>
#include <set>

using namespace vynaudiofilterhost::vst3;
using Steinberg::Vst::SpeakerArrangement;
using namespace vyntest;
using vynmediatypes::AudioChannelDescription;
namespace SpeakerArr = Steinberg::Vst::SpeakerArr;

namespace {

constexpr unsigned kNewSDK = 0x030608;
constexpr unsigned kOldSDK = 0x030607;

AudioChannelLayout Layout(std::vector<std::int32_t> const& labels) {
    return {labels.begin(), labels.end()};
}

AudioChannelLayout Labels(SpeakerArrangement arrangement) {
    std::vector<AudioChannelDescription> labels(3);
    LabelsFromArrangement(arrangement, labels);
    return labels;
}

AudioBusDescription Bus(SpeakerArrangement arrangement, unsigned sdkVersion, int busType = 0,
                        vyncore::UString const& name = {}) {
    std::vector<AudioBusDescription> buses;
    AddBusForArrangement(arrangement, busType, name, sdkVersion, buses);
    return buses.empty() ? AudioBusDescription() : buses.front();
}

std::vector<SpeakerArrangement> Request(std::vector<AudioChannelLayout> const& layouts) {
    std::vector<SpeakerArrangement> arrangements{42};
    ArrangementsFromLayouts(layouts, arrangements);
    return arrangements;
}

} // namespace

TEST(VST3SpeakerArrangementTest, EachSpeakerHasItsOwnLabel) {
    std::int32_t const kLabels[] = {100, 101, 102, 103, 104, 105, 107, 108, 106, 109, 110, 111, 112, 114, 113, 115, 117,
                                    116, 131, 0,   134, 135, 136, 137, 127, 128, 129, 130, 138, 139, 140, 141, 142};
    for (int bit = 0; bit < 33; ++bit) {
        std::int32_t const label = kLabels[bit];
        EXPECT_EQ(Labels(SpeakerArrangement{1} << bit), Layout({label}));
        EXPECT_EQ(SpeakerLabelTable::BitFromLabel(label), bit);
    }
    EXPECT_EQ(SpeakerLabelTable::BitFromLabel(143), std::nullopt);
    EXPECT_EQ(SpeakerLabelTable::LabelFromBit(33), std::nullopt);
    EXPECT_EQ(SpeakerLabelTable::LabelFromBit(-1), std::nullopt);
}

TEST(VST3SpeakerArrangementTest, LabelsFollowTheOrderOfTheBits) {
    EXPECT_EQ(Labels(0), Layout({}));
    EXPECT_EQ(Labels(SpeakerArr::k71Music), Layout({100, 101, 102, 103, 104, 105, 109, 110}));
    EXPECT_EQ(Labels(SpeakerArr::k140), Layout({100, 101, 104, 105, 109, 110, 112, 113, 115, 116, 138, 140}))
        << "speakers without a label are left out";
    EXPECT_EQ(Labels(SpeakerArrangement{7} << 33), Layout({0, 0, 0})) << "none of them has a label";
    EXPECT_EQ(Labels(~SpeakerArrangement{0}).size(), 33u);
}

TEST(VST3SpeakerArrangementTest, FiftyEightArrangementsHaveAName) {
    using namespace Steinberg::Vst::SpeakerArr;
    struct {
        SpeakerArrangement arrangement;
        char16_t const* name;
        int channelCount;
    } const kCases[] = {
        // clang-format off
        {kMono, u"Mono", 1}, {kStereo, u"Stereo", 2}, {kStereoSurround, u"Stereo (Ls Rs)", 2},
        {kStereoCenter, u"Stereo (Lc Rc)", 2}, {kStereoSide, u"Stereo (Sl Sr)", 2},
        {kStereoCLfe, u"Stereo (C LFE)", 2}, {kStereoTF, u"Stereo (Tfl Tfr)", 2}, {kStereoTS, u"Stereo (Tsl Tsr)", 2},
        {kStereoTR, u"Stereo (Trl Trr)", 2}, {kStereoBF, u"Stereo (Bfl Bfr)", 2}, {k30Cine, u"LRC", 3},
        {k30Music, u"LRS", 3}, {k31Cine, u"LRC+LFE", 4}, {k31Music, u"LRS+LFE", 4}, {k40Cine, u"LRCS", 4},
        {k40Music, u"Quadro", 4}, {k41Cine, u"LRCS+LFE", 5}, {k50, u"5.0", 5}, {k41Music, u"Quadro+LFE", 5},
        {k51, u"5.1", 6}, {k60Cine, u"6.0 Cine", 6}, {k60Music, u"6.0 Music", 6}, {k61Cine, u"6.1 Cine", 7},
        {k61Music, u"6.1 Music", 7}, {k70Cine, u"7.0 Cine (SDDS)", 7}, {k70Music, u"7.0 Music (Dolby)", 7},
        {k71Cine, u"7.1 Cine (SDDS)", 8}, {k71Music, u"7.1 Music (Dolby)", 8},
        {k71CineTopCenter, u"7.1 Cine Top Center", 8}, {k71CineCenterHigh, u"7.1 Cine Center High", 8},
        {k71CineFrontHigh, u"7.1 Cine Front High", 8}, {k71CineSideHigh, u"7.1 Cine Side High", 8},
        {k71CineFullRear, u"7.1 Cine Full Rear", 8}, {k71Proximity, u"7.1 Proximity", 8}, {k80Cine, u"8.0 Cine", 8},
        {k80Music, u"8.0 Music", 8}, {k80Cube, u"8.0 Cube", 8}, {k81Cine, u"8.1 Cine", 9},
        {k81Music, u"8.1 Music", 9}, {k102, u"10.2 Experimental", 12}, {k122, u"12.2", 14}, {k50_4, u"5.0.4", 9},
        {k51_4, u"5.1.4", 10}, {k91Atmos, u"9.1 Dolby Atmos", 10}, {k100, u"10.0 Auro-3D", 10},
        {k101, u"10.1 Auro-3D", 11}, {k110, u"11.0 Auro-3D", 11}, {k111, u"11.1 Auro-3D", 12},
        {k130, u"13.0 Auro-3D", 13}, {k131, u"13.1 Auro-3D", 14}, {k81MPEG3D, u"8.1 MPEG", 9}, {k70_4, u"7.0.4", 11},
        {k71_4, u"7.1.4", 12}, {k140, u"14.0", 14}, {k222, u"22.2", 24}, {kAmbi1stOrderACN, u"Ambi 1st-Order", 4},
        {kAmbi2cdOrderACN, u"Ambi 2cd-Order", 9}, {kAmbi3rdOrderACN, u"Ambi 3rd-Order", 16},
        // clang-format on
    };
    std::set<SpeakerArrangement> known;
    for (auto const& testCase : kCases) {
        EXPECT_EQ(ArrangementName(testCase.arrangement), testCase.name);
        EXPECT_EQ(std::popcount(testCase.arrangement), testCase.channelCount);
        known.insert(testCase.arrangement);
    }
    EXPECT_EQ(known.size(), 58u);
    for (SpeakerArrangement other : {kEmpty, kCineFront, k90Cine, k220, SpeakerArrangement{1}, ~SpeakerArrangement{0}})
        EXPECT_EQ(ArrangementName(other), u"");
}

TEST(VST3SpeakerArrangementTest, BusTakesItsNameFromThePlugInOrItsArrangementOrItsLayout) {
    EXPECT_EQ(Bus(0x3, kNewSDK, 0, u"Main Out").GetName(), u"Main Out");
    EXPECT_EQ(Bus(0x3, kNewSDK).GetName(), u"Stereo");
    EXPECT_EQ(Bus(0x1F, kNewSDK).GetName(), vynmediatypes::AudioChannelLayoutDescription(Labels(0x1F)));
    EXPECT_EQ(Bus(0x3, kNewSDK, 0).GetType(), AudioBusDescription::kTypeMain);
    EXPECT_EQ(Bus(0x3, kNewSDK, 1).GetType(), AudioBusDescription::kTypeSideChain);
    EXPECT_EQ(Bus(0x3, kNewSDK, -7).GetType(), AudioBusDescription::kTypeSideChain);
}

TEST(VST3SpeakerArrangementTest, BusHasTheChannelsOfItsArrangement) {
    EXPECT_EQ(Bus(0x80000, kNewSDK).GetLayout(), Layout({0}));
    for (unsigned sdkVersion : {0u, kOldSDK, kNewSDK}) {
        EXPECT_EQ(Bus(SpeakerArr::kAmbi1stOrderACN, sdkVersion).GetLayout(), Layout({143, 143, 143, 143}));
        EXPECT_EQ(Bus(SpeakerArr::kAmbi2cdOrderACN, sdkVersion).GetLayout(), Layout(std::vector<int>(9, 143)));
    }
    EXPECT_EQ(Bus(SpeakerArr::kAmbi3rdOrderACN, kNewSDK).GetLayout(), Layout(std::vector<int>(16, 143)));
    EXPECT_EQ(Bus(SpeakerArr::kAmbi3rdOrderACN, kOldSDK).GetLayout(), Layout({134, 135, 136, 137}));

    std::vector<AudioBusDescription> buses(1);
    AddBusForArrangement(0, 0, u"Nothing", kNewSDK, buses);
    EXPECT_EQ(buses.size(), 1u) << "an empty mask is no bus";
}

TEST(VST3SpeakerArrangementTest, RequestConveysTheNumberOfChannelsButForAmbisonics) {
    struct {
        std::vector<std::int32_t> labels;
        std::vector<SpeakerArrangement> expected;
    } const kCases[] = {{{}, {}},
                        {{100}, {0x80000}},
                        {{104, 105}, {0x3}},
                        {{100, 101, 102}, {}},
                        {{100, 101, 104, 105}, {0x33}},
                        {{134, 135, 136, 137}, {0xF00000}},
                        {{135, 134, 136, 137}, {0x33}},
                        {{143, 143, 143, 143}, {0xF00000}},
                        {{143, 143, 143, 137}, {0x33}},
                        {std::vector<int>(5, 100), {}},
                        {std::vector<int>(6, 143), {0x3F}},
                        {std::vector<int>(8, 100), {0xFF}},
                        {std::vector<int>(9, 143), {0x7C000F00000}},
                        {std::vector<int>(9, 100), {}},
                        {std::vector<int>(16, 143), {0x3FFC000F00000}}};
    for (auto const& testCase : kCases)
        EXPECT_EQ(Request({Layout(testCase.labels)}), testCase.expected) << testCase.labels.size();
    EXPECT_EQ(Request({Layout({100}), Layout({1, 2, 3}), Layout({1, 2})}),
              (std::vector<SpeakerArrangement>{0x80000, 3}));
}
