#include "apps/CommandFailure.h"
#include "support/TemporaryFolder.h"
#include "vynhost/AutomationFile.h"
#include "vynhost/AutomationPlayer.h"

#include "vynaudiofilterhost/AudioFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <set>
#include <tuple>

using namespace vynhost;

namespace {

class AutomationFileTest : public testing::Test {
protected:
    AutomationFile Read(std::string const& text) const {
        std::ofstream(mPath, std::ios::binary) << text;
        return AutomationFile(mPath);
    }

    std::string FailureOf(std::string const& text) const {
        return vyntest::FailureOf([&] { Read(text); });
    }

    vyntest::TemporaryFolder mFolder;
    std::string mPath = mFolder.Path() / "automation";
};

TEST_F(AutomationFileTest, EveryFormGivesTheSameEntries) {
    for (char const* const text : {
             "0,Gain,-6\n1.5,\"A \"\"b\"\",\nc\",Hall\n",
             "\xEF\xBB\xBFSeconds,Parameter, VALUE\r\n\r\n  \r\n # a comment, with \"\r\n0, Gain ,-6\r\n"
             "1.5 , \"A \"\"b\"\",\nc\" , Hall",
             "[[0, \"Gain\", -6], [1.5, \"A \\\"b\\\",\\nc\", \"Hall\"]]",
             "\xEF\xBB\xBF \n[{\"value\": -6, \"seconds\": 0, \"parameter\": \"Gain\"},"
             "[\"1.5\", \"A \\\"b\\\",\\nc\", \"Hall\"]]",
         }) {
        AutomationFile const file = Read(text);
        ASSERT_EQ(file.GetEntries().size(), 2U) << text;
        AutomationEntry const &first = file.GetEntries()[0], &second = file.GetEntries()[1];
        EXPECT_EQ(std::tuple(first.seconds, first.parameter, first.value), std::tuple(0.0, "Gain", "-6"));
        EXPECT_EQ(std::tuple(second.seconds, second.parameter, second.value), std::tuple(1.5, "A \"b\",\nc", "Hall"));
    }
    EXPECT_EQ(Read("[[0.1, 2, 0.30000001192092896]]").GetEntries()[0].value, "0.30000001192092896");
    for (char const* const nothing : {"\n", "# nothing", "seconds,parameter,value\n", "[]"})
        EXPECT_TRUE(Read(nothing).GetEntries().empty()) << nothing;
    AutomationFile const quoted = Read("# c\n0,\"a\nb\",1\n1,2,3\n");
    EXPECT_STREQ(quoted.MakeError(quoted.GetEntries()[1], ExitStatus::kWrongUsage, "x").what(), "line 4: x");
}

TEST_F(AutomationFileTest, WhatIsNoAutomationOrTooMuchIsToldWithItsPlace) {
    std::string const point = "a point is [seconds, parameter, value]";
    for (auto const& [text, failure] : std::vector<std::pair<std::string, std::string>>{
             {"", "is empty"},
             {"0,Gain,1\n0,Gain\n", "line 2: there are 2 fields and not three"},
             {"0,Gain,1,", "line 1: there are 4 fields"},
             {"0;Gain;1", "line 1: there are 1 fields"},
             {"\n\nx,Gain,1", "line 3: \"x\" is no time in seconds"},
             {"0,Gain,1\nseconds,parameter,value", "line 2: \"seconds\" is no time"},
             {",Gain,1", "line 1: \"\" is no time"},
             {"nan,Gain,1", "line 1: \"nan\" is no time"},
             {"inf,Gain,1", "line 1: \"inf\" is no time"},
             {"-0.1,Gain,1", "line 1: the time -0.1 is not within 0 and 1e+07 seconds"},
             {"1e8,Gain,1", "line 1: the time 1e8 is not within"},
             {"0,0,1\n0,\"Gain,1\n0,0,1", "line 2: a quotation mark has no partner"},
             {"0,\"Gain\"x,1", "line 1: something stands behind a closing quotation mark"},
             {std::string(2000, ','), "line 1: there are more than 1000 fields"},
             {std::string("\0\0\0", 3), "line 1: "},
             {"{}", "is no automation: a JSON document is to be an array"},
             {"[[0, \"Gain\", 1], 7]", "entry 2: " + point},
             {"[[0, \"Gain\"]]", "entry 1: " + point},
             {"[[0, \"Gain\", 1, 1]]", "entry 1: " + point},
             {"[[0, \"Gain\", 1], [0, [], 1]]", "entry 2: " + point},
             {"[[0, \"Gain\", true]]", "entry 1: " + point},
             {"[[null, \"Gain\", 1]]", "entry 1: " + point},
             {"[{\"seconds\": 0, \"parameter\": 1}]", "entry 1: " + point},
             {"[{\"seconds\": 0, \"parameter\": 1, \"values\": 1}]", "entry 1: " + point},
             {"[{\"seconds\": 0, \"parameter\": 1, \"value\": 1, \"value\": 2}]", "entry 1: " + point},
             {"[[0, 0, 1], [-1, 0, 1]]", "entry 2: the time -1 is not within"},
             {"[[0, 0, 1]", "is no JSON document: parse error at line 1, column 11"},
             {std::string("[[0, 0, 1]]\0[[0, 0, 1]]", 23), "is no JSON document: there is a zero byte in it"},
             {"[[1e999, 0, 1]]", "is no JSON document: "},
             {"[[0, \"\xFF\", 1]]", "is no JSON document: "},
             {std::string(1 << 20, '['), "entry 1: " + point},
         })
        EXPECT_EQ(FailureOf(text).substr(0, failure.size() + 2), "1 " + failure) << text.substr(0, 80);
    std::string lines;
    for (int i = 0; i < 1'000'001; ++i)
        lines += "0,0,1\n";
    EXPECT_EQ(FailureOf(lines), "1 line 1000001: there are more than 1000000 points");
    std::filesystem::resize_file(mPath, (64U << 20) + 1);
    EXPECT_EQ(vyntest::FailureOf([&] { AutomationFile const large(mPath); }), "1 is larger than 64 MiB");
}

AutomationPoint Point(std::int64_t sample, float normalized) {
    return {sample, {normalized, std::nullopt}};
}

// Of a parameter whose display values are the squares of the normalized ones.
AutomationPoint DisplayPoint(std::int64_t sample, double display) {
    return {sample, {static_cast<float>(std::sqrt(display)), display}};
}

AutomationCurve MakeCurve(std::vector<AutomationPoint> points, bool jumps = false) {
    return {std::move(points), jumps, [](double display) { return static_cast<float>(std::sqrt(display)); }};
}

TEST(AutomationCurveTest, ValuesBetweenAndAtPoints) {
    std::vector<AutomationPoint> const points{Point(10, 0.5F), Point(20, 0),    Point(20, 0.25F),
                                              Point(20, 1),    Point(30, 0.5F), Point(40, 0.5F)};
    AutomationCurve const moving = MakeCurve(points);
    AutomationCurve const jumping = MakeCurve(points, true);
    struct Case {
        std::int64_t sample;
        std::optional<float> moves, jumps;
    };
    for (Case const& one : {Case{9, {}, {}}, Case{10, 0.5F, 0.5F}, Case{15, 0.25F, 0.5F}, Case{19, 0.05F, 0.5F},
                            Case{20, 1.0F, 1.0F}, Case{25, 0.75F, 1.0F}, Case{39, 0.5F, 0.5F}, Case{999, 0.5F, 0.5F}}) {
        EXPECT_EQ(moving.GetValue(one.sample), one.moves) << one.sample;
        EXPECT_EQ(jumping.GetValue(one.sample), one.jumps) << one.sample;
    }
    AutomationCurve const display = MakeCurve({DisplayPoint(0, 0), DisplayPoint(8, 1), Point(16, 0)});
    EXPECT_FLOAT_EQ(*display.GetValue(2), 0.5F);
    EXPECT_FLOAT_EQ(*display.GetValue(12), 0.5F);
    EXPECT_EQ(moving.CountPointsFrom(20), 5);
}

TEST(AutomationCurveTest, ChangesAreDueAtPointsAndOnTheGridWhereTheValueMoves) {
    auto const changes = [](AutomationCurve const& curve) {
        std::vector<std::int64_t> samples;
        for (auto next = curve.FindNextChange(-1); next; next = curve.FindNextChange(*next))
            samples.push_back(*next);
        return samples;
    };
    std::vector<AutomationPoint> const points{Point(5, 0), Point(40, 1), Point(48, 0), Point(1000, 0), Point(1000, 1)};
    EXPECT_EQ(changes(MakeCurve(points)), (std::vector<std::int64_t>{5, 16, 32, 40, 48, 1000}));
    EXPECT_EQ(changes(MakeCurve(points, true)), (std::vector<std::int64_t>{5, 40, 48, 1000}));
    EXPECT_EQ(changes(MakeCurve({})), std::vector<std::int64_t>());
}

class SettingsLog : public vynaudiofilterhost::AudioFilter {
public:
    using Entry = std::tuple<std::int64_t, int, float>; ///< sample, parameter, value

    SettingsLog() : AudioFilter(u"test", u"Test") {}
    void SetParameter(int index, float value) override { entries.emplace_back(position, index, value); }

    std::int64_t position = 0;
    std::vector<Entry> entries;
};

TEST(AutomationPlayerTest, WhatIsSetWhenDoesNotDependOnTheBlockSize) {
    std::vector<SettingsLog::Entry> expected;
    for (int const blockSize : {1, 7, 16, 100, 4096}) {
        boost::intrusive_ptr<SettingsLog> const filter(new SettingsLog);
        AutomationPlayer player;
        player.Add(3, MakeCurve({Point(0, 0.5F), Point(77, 0.5F), Point(300, 1), Point(300, 0), Point(5000, 0)}));
        player.Add(1, MakeCurve({Point(13, 0), Point(290, 1), Point(301, 1)}, true));
        player.Add(2, MakeCurve({}));
        int slices = 0;
        for (; filter->position < 6000; ++slices) {
            int const samples = player.Advance(*filter, filter->position, blockSize);
            ASSERT_TRUE(samples > 0 && samples <= blockSize);
            filter->position += samples;
        }
        if (expected.empty())
            expected = filter->entries;
        EXPECT_EQ(filter->entries, expected) << blockSize;
        // The points, and the 14 places of the grid between 77 and 300, part the largest blocks.
        EXPECT_TRUE(blockSize < 4096 || slices == 1 + 2 + 14 + 3 + 1 + 1) << slices;
    }
    std::set<std::int64_t> samples;
    for (auto const& [sample, parameter, value] : expected)
        samples.insert(parameter == 3 ? sample : -sample);
    EXPECT_EQ(expected.front(), SettingsLog::Entry(0, 3, 0.5F));
    EXPECT_EQ(samples, (std::set<std::int64_t>{-290, -13, 0, 80, 96, 112, 128, 144, 160, 176, 192, 208, 224, 240, 256,
                                               272, 288, 300}));
}

} // namespace
