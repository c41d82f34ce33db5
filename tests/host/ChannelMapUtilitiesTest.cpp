#include "vynaudiofilterhost/ChannelMapUtilities.h"

#include "fakes/RoutedFilter.h"
#include "host/HostTest.h"

#include <limits>
#include <utility>

namespace {

using namespace vyntest;
using namespace vynaudiofilterhost::utility;
using Values = std::vector<int>;

AudioChannelLayout Layout(std::initializer_list<int> labels) {
    return AudioChannelLayout(labels.begin(), labels.end());
}

AudioBusDescription BusOf(AudioChannelLayout layout) {
    return {u"Bus", std::move(layout), AudioBusDescription::kTypeMain};
}

// 1 for an entry that counts as connected.
Values ConnectionsOf(ChannelMap const& map) {
    Values sizes;
    for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry)
        sizes.push_back(static_cast<int>(map.GetChannelLayout(entry).size()));
    return sizes;
}

void ExpectLayoutsToFit(ChannelMap const& map) {
    for (int entry = 0; entry < map.GetNumberOfChannels(); ++entry)
        EXPECT_EQ(map.GetChannelLayout(entry).size(), map[entry] >= 0 ? 1u : 0u) << entry;
}

/// A stored map: pairs of source and target.
PropList Stored(std::vector<std::pair<int, int>> const& entries, int count) {
    PropList list;
    list.SetValue("C", count);
    for (std::size_t entry = 0; entry < entries.size(); ++entry) {
        list.SetValue("S_" + std::to_string(entry + 1), entries[entry].first);
        list.SetValue("D_" + std::to_string(entry + 1), entries[entry].second);
    }
    return list;
}

TEST(ChannelMapUtilitiesTest, ChannelsAreLookedForInEachBusByItself) {
    EXPECT_EQ(CountChannels({Bus(1), Bus(0), Bus(6)}), 7);
    EXPECT_TRUE(ChannelIdxIsPresentInBusDescriptions(1, {Bus(1), Bus(2)}));
    EXPECT_FALSE(ChannelIdxIsPresentInBusDescriptions(2, {Bus(2), Bus(2)}));
    EXPECT_FALSE(ChannelIdxIsPresentInBusDescriptions(-1, {Bus(2)}));
    EXPECT_FALSE(ChannelIdxIsPresentInBusDescriptions(0, {}));
}

TEST(ChannelMapUtilitiesTest, SingleConnectionsAreMadeAndTakenAway) {
    ChannelMap map = MapOf({7});
    CreateEmptyChannelMap(2, false, map);
    EXPECT_THAT(ValuesOf(map), ElementsAre(0, 1));
    EXPECT_THAT(ConnectionsOf(map), ElementsAre(0, 0));
    CreateEmptyChannelMap(2, true, map);
    EXPECT_THAT(ConnectionsOf(map), ElementsAre(1, 1));

    map = MapOf({5, 4, 3, 2, 1, 0});
    RemoveMappingToTarget(map, 2);
    RemoveMappingToTarget(map, -1);
    RemoveMappingFromSource(map, 5);
    RemoveMappingFromSource(map, 6);
    RemoveMappingFromSource(map, -1);
    SetMapping(map, -1, 3);
    EXPECT_THAT(ValuesOf(map), ElementsAre(5, 4, 3, -1, 1, -1));
    EXPECT_THAT(ConnectionsOf(map), ElementsAre(1, 1, 1, 0, 1, 0));
    SetMapping(map, std::numeric_limits<int>::max(), 3);
    SetMapping(map, 7, 0);
    EXPECT_THAT(ValuesOf(map), ElementsAre(5, 4, 3, -1, 1, -1, -1, 0));

    map = MapOf({1, 1});
    RemoveMappingToTarget(map, 1);
    EXPECT_THAT(ValuesOf(map), ElementsAre(-1, 1)) << "the first alone";
}

TEST(ChannelMapUtilitiesTest, BestFitFollowsLabelsAndElsePositions) {
    AudioChannelLayout const stereo = Layout({100, 101});
    AudioChannelLayout const surround = Layout({100, 101, 102, 103, 104, 105});
    struct Case {
        AudioChannelLayout bus, target;
        Values expected;
    };
    for (Case const& one : {
             Case{stereo, Layout({0}), {0, -1}},
             Case{Layout({0}), stereo, {0}},
             Case{surround, stereo, {0, 1, -1, -1, -1, -1}},
             Case{surround, surround, {0, 1, 2, 3, 4, 5}},
             Case{surround, Layout({100, 101, 104, 105, 102, 103}), {0, 1, 4, 5, 2, 3}},
             Case{stereo, {}, {-1, -1}},
             Case{Layout({100, 100, 100}), Layout({101, 100, 100}), {1, 2, -1}},
             Case{Layout({9, 101}), Layout({100, 101}), {-1, 1}},
             Case{{}, stereo, {}},
         }) {
        ChannelMap const map = BuildBestFitChannelMap({BusOf(one.bus), Bus(4)}, one.target);
        EXPECT_EQ(ValuesOf(map), one.expected);
        ExpectLayoutsToFit(map);
    }
    EXPECT_THAT(ValuesOf(BuildBestFitChannelMap({}, stereo)), IsEmpty());
}

TEST(ChannelMapUtilitiesTest, ChannelsAreAssignedToNumbersThatAreNoValue) {
    struct Case {
        Values map;
        std::size_t channels;
        int next, limit, start;
        Values expected;
        std::size_t left;
        int nextAfterwards;
    };
    for (Case const& one : {
             Case{{0, 1}, 1, 2, 4, 2, {0, 1, 2}, 0, 3},
             Case{{0, 1}, 2, 2, 4, 2, {0, 1, 2, 3}, 0, 4},
             // The numbers 2 and 3 are values, so entry 4 is the first.
             Case{{3, 2}, 1, 9, 6, 2, {3, 2, -1, -1, 9}, 0, 10},
             // Values count and not entries, so that an entry which no value names is taken again.
             Case{{1, -1, -1}, 2, 5, 3, 0, {6, -1, -1}, 0, 7},
             Case{{0}, 3, 2, 3, 1, {0, 4}, 0, 5},
             // Entry 1 loses its value 0, which frees the number 0.
             Case{{-1, 0}, 2, 5, 3, 0, {6, 5}, 0, 7},
             Case{{0}, 3, 2, 4, 4, {0}, 2, 2},
             Case{{}, 1, 0, -3, -2, {}, 0, 0},
             Case{{1, 0}, 1, 5, std::numeric_limits<int>::max(), 0, {1, 0, 5}, 0, 6},
         }) {
        ChannelMap map = MapOf(one.map);
        AudioChannelLayout channels(one.channels);
        int next = one.next;
        AssignChannels(map, channels, next, one.limit, one.start);
        EXPECT_EQ(ValuesOf(map), one.expected);
        ExpectLayoutsToFit(map);
        EXPECT_EQ(channels.size(), one.left);
        EXPECT_EQ(next, one.nextAfterwards);
    }
}

TEST(ChannelMapUtilitiesTest, SavedMapComesBack) {
    for (Values const& values : {Values{}, Values{0, 1}, Values{1, -1, 0}, Values{-1}}) {
        PropList list;
        EXPECT_TRUE(SaveChannelMap(MapOf(values), &list));
        ChannelMap map = MapOf({5, 5});
        EXPECT_TRUE(LoadChannelMap(&list, Bus(2), static_cast<int>(values.size()), false, map));
        // Trailing channels without a connection have no entry.
        for (std::size_t channel = 0; channel < values.size(); ++channel)
            EXPECT_EQ(map[static_cast<int>(channel)], values[channel]);
    }
    PropList empty;
    SaveChannelMap({}, &empty);
    EXPECT_EQ(empty.GetValueNames(), std::vector<vyncore::UTF8String>{"C"});
    EXPECT_FALSE(SaveChannelMap({}, nullptr));
}

TEST(ChannelMapUtilitiesTest, LoadingKeepsToWhatFilterAndTargetHave) {
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    struct Case {
        char const* why;
        PropList list;
        int channels;
        bool fill, whole;
        Values expected;
    };
    PropList halfEntry = Stored({{0, 0}}, 2);
    halfEntry.SetValue("S_2", 1);
    PropList wrongKind = Stored({{0, 0}}, 1);
    wrongKind.SetValue("D_1", vyncore::UTF8String("0"));
    for (Case const& one : {
             Case{"no count", PropList(), 2, true, false, {}},
             Case{"count 0", Stored({}, 0), 3, true, true, {0, 1}},
             Case{"negative count", Stored({}, kLeast), 1, true, true, {0}},
             Case{"a count beyond the entries", Stored({{0, 1}}, kMost), 2, false, false, {1}},
             Case{"and the rest is filled", Stored({{1, 0}}, kMost), 3, true, false, {-1, 0}},
             Case{"sources beyond",
                  Stored({{2, 0}, {kMost, 0}, {-1, 0}, {kLeast, 1}, {1, 1}}, 5),
                  2,
                  false,
                  true,
                  {-1, 1}},
             Case{"targets beyond", Stored({{0, 2}, {1, kMost}, {2, kLeast}}, 3), 3, true, true, {}},
             Case{"an unconnected one stays so", Stored({{0, 0}, {1, -1}}, 2), 3, true, true, {0}},
             Case{"a target taken by another", Stored({{0, 1}}, 1), 2, true, true, {1}},
             Case{"the last of one source counts", Stored({{0, 1}, {0, 0}}, 2), 1, false, true, {0}},
             Case{"no channels", Stored({{0, 0}}, 1), 0, true, true, {}},
             Case{"half an entry does not count", halfEntry, 2, true, false, {0, 1}},
             Case{"another kind of value", wrongKind, 1, false, false, {}},
         }) {
        ChannelMap map = MapOf({5, 5});
        EXPECT_EQ(LoadChannelMap(&one.list, Bus(2), one.channels, one.fill, map), one.whole) << one.why;
        EXPECT_EQ(ValuesOf(map), one.expected) << one.why;
        ExpectLayoutsToFit(map);
    }
    ChannelMap map = MapOf({5});
    EXPECT_FALSE(LoadChannelMap(nullptr, Bus(2), 2, true, map));
    EXPECT_EQ(map.GetNumberOfChannels(), 0);
}

TEST(ChannelMapUtilitiesTest, IndicesAreCopiedBetweenListsOfOneSizeAlone) {
    Values to{7, 8, 9};
    CopyChannelMapIndexVector({1, 2}, to);
    EXPECT_THAT(to, ElementsAre(7, 8, 9));
    CopyChannelMapIndexVector({1, -1, 3}, to);
    EXPECT_THAT(to, ElementsAre(1, -1, 3));
}

TEST(ChannelMapUtilitiesTest, MappingsAreDescribedByTheFiltersLabels) {
    class Filter : public AudioFilter {
    public:
        Filter() : AudioFilter(u"id", u"name") {
            AddInputBus(BusOf(Layout({100, 101})));
            AddOutputBus(BusOf(Layout({0})));
        }
    };
    boost::intrusive_ptr<AudioFilter> const filter(new Filter);
    filter->SetChannelMapTargetChannelLayout(Layout({100, 101, 102}));
    filter->SetChannelMap(MapOf({1, 0}), AudioFilter::kDirectionInput);
    filter->SetChannelMap(MapOf({2}), AudioFilter::kDirectionOutput);
    EXPECT_EQ(GetAudioFilterChannelMappingsDescription(filter, 8), u"In: R, L, - | Out: -, -, M");
    EXPECT_EQ(GetAudioFilterChannelMappingsDescription(filter, 1), u"In: R | Out: -");
    EXPECT_EQ(GetAudioFilterChannelMappingsDescription(nullptr, 1), u"");
}

} // namespace
