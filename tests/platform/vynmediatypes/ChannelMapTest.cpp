#include "vynmediatypes/ChannelMap.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace vynmediatypes;

ChannelMap Map(std::vector<int> const& values) {
    ChannelMap map;
    for (int const value : values)
        map.AddChannel({}, value);
    return map;
}

TEST(ChannelMapTest, OutsideTheMapThereIsNoMatchAndNothingToSet) {
    ChannelMap map = Map({3, 4});
    for (int const index : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(map[index], ChannelMap::kSourceChannelIndex_NoMatch);
        EXPECT_TRUE(map.GetChannelLayout(index).empty());
        map.SetChannel(index, 9);
        map.SetChannelLayout(index, CreateMonoChannelLayout());
    }
    EXPECT_EQ(map, Map({3, 4}));
}

TEST(ChannelMapTest, FindGivesTheFirstEntryWithTheValue) {
    ChannelMap map = Map({-1, 5, 2, 5});
    EXPECT_EQ(map.Find(5), 1);
    EXPECT_EQ(map.Find(-1), 0);
    EXPECT_LT(map.Find(7), 0);
    map.SetChannel(1, 7);
    EXPECT_EQ(map.Find(7), 1);
    EXPECT_EQ(map.Find(5), 3);
}

TEST(ChannelMapTest, AMappingIsEqualWhateverItsLayoutsAre) {
    ChannelMap const plain = Map({0, 1});
    ChannelMap connected = plain;
    connected.SetChannelLayout(0, CreateMonoChannelLayout());
    EXPECT_TRUE(connected.IsMappingEqual(plain));
    EXPECT_TRUE(connected != plain);
    EXPECT_EQ(connected.GetChannelLayout(0).size(), 1u);
    EXPECT_FALSE(plain.IsMappingEqual(Map({0})));
    EXPECT_FALSE(plain.IsMappingEqual(Map({0, 2})));
    EXPECT_FALSE(plain.IsMappingEqual(Map({0, 1, -1})));
}

TEST(ChannelMapTest, LabelsTellTheFilterChannelOfEachTrackChannel) {
    struct {
        std::vector<int> values;
        int count;
        char16_t const* text;
    } const cases[] = {
        {{0, 1}, 2, u"L, R"}, {{1, 0}, 1, u"R"}, {{-1, 3, 0, 0}, 4, u"2, -, -, R"},
        {{}, 2, u"-, -"},     {{0, -1}, 0, u""}, {{0, -1}, -1, u""},
    };
    for (auto const& tried : cases)
        EXPECT_EQ(GetChannelMappingLabels(Map(tried.values), tried.count, CreateStereoChannelLayout()), tried.text);
}

} // namespace
