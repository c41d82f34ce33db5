#include "apps/CommandFailure.h"
#include "vynhost/NumberText.h"
#include "vynhost/ParameterScale.h"
#include "vynhost/ParameterSetting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vynhost;
using vynaudiofilterhost::AudioFilterParameterInfo;
using vyntest::FailureOf;

namespace {

// Display values from low to high; the texts are those of the steps.
class TestInfo : public AudioFilterParameterInfo {
public:
    TestInfo(float low, float high, std::vector<char16_t const*> texts = {}, char16_t const* label = u"")
        : AudioFilterParameterInfo(u"Test", label, vynaudiofilterhost::kParameterUnitNone),
          mLow(low),
          mHigh(high),
          mTexts(std::move(texts)) {}

    float ToNormalized(float display) const override { return (display - mLow) / (mHigh - mLow); }
    float FromNormalized(float value) const override { return mLow + value * (mHigh - mLow); }
    // As that of a logarithmic parameter: no bound of the display values.
    float GetHiBound() const override { return 6.9F; }
    int GetStepCount() const override { return std::max(0, static_cast<int>(mTexts.size()) - 1); }
    vyncore::UString GetParameterString(float value) const override {
        return mTexts.at(static_cast<std::size_t>(std::lround(value * static_cast<float>(GetStepCount()))));
    }

private:
    float mLow, mHigh;
    std::vector<char16_t const*> mTexts;
};

TEST(NameLookupTest, ExactNamesWinOverFoldedOnesAndNamesOverIndices) {
    NameLookup const lookup("parameter", {"Gain", "gain", "3", "Größe ", "Mix", "", "1", "1"});
    for (auto const& [text, index] :
         {std::pair("Gain", 0), std::pair("gain", 1), std::pair("MIX", 4), std::pair("3", 2), std::pair("4", 4),
          std::pair("größe", 3), std::pair("5", 5), std::pair("1", 1)})
        EXPECT_EQ(lookup.Find(text), index) << text;
    EXPECT_EQ(FailureOf([&] { lookup.Find("GAIN"); }),
              "2 \"GAIN\" is the name of several parameters, choose one by its index: 0 \"Gain\", 1 \"gain\"");
}

TEST(NameLookupTest, WhatIsNotThereIsAnsweredWithCandidates) {
    for (char const* const nothing : {"", " \t"})
        EXPECT_EQ(FailureOf([&] {
                      NameLookup("preset", {"Hall", ""}).Find(nothing);
                  }),
                  "2 a preset is chosen by its name or its index");
    NameLookup const lookup("preset", {"Hall", "Small hall", "Room"});
    EXPECT_EQ(FailureOf([&] { lookup.Find("HAL"); }),
              "2 there is no preset \"HAL\"; choose from 0 \"Hall\", 1 \"Small hall\"");
    for (char const* const text : {"3", "-1", "1.0", " 1", "99999999999", "x"})
        EXPECT_EQ(FailureOf([&] { lookup.Find(text); }),
                  "2 there is no preset \"" + std::string(text) +
                      "\"; choose from 0 \"Hall\", 1 \"Small hall\", 2 \"Room\"");
    std::string const many = FailureOf([] { NameLookup("preset", std::vector<std::string>(33, "P")).Find("x"); });
    EXPECT_TRUE(many.ends_with("19 \"P\" and 13 more")) << many;
    EXPECT_EQ(FailureOf([] { NameLookup("preset", {}).Find("0"); }),
              "2 there is no preset \"0\": the plug-in has none");
}

TEST(ParameterScaleTest, NumbersPercentagesAndTextsAreRead) {
    ParameterScale const gain(new TestInfo(-60, 12));
    ParameterScale const falling(new TestInfo(10, 0));
    ParameterScale const mode(new TestInfo(0, 2, {u"Room", u"44100", u"Hall "}));
    ParameterScale const labelled(new TestInfo(-60, 12, {}, u"dB"));
    ParameterScale const ratio(new TestInfo(0, 4, {u"1", u"2", u"4", u"50%", u"4"}, u": 1"));
    struct Case {
        ParameterScale const& scale;
        char const* text;
        float normalized;
    };
    for (Case const& one :
         {Case{gain, "-60", 0}, Case{gain, " +12 ", 1}, Case{gain, "-24", 0.5F}, Case{gain, "1.2e1", 1},
          Case{gain, "50%", 0.5F}, Case{gain, "100 %", 1}, Case{gain, "12.0001", 1}, Case{gain, "-60.0005", 0},
          Case{falling, "2.5", 0.75F}, Case{mode, "1", 0.5F}, Case{mode, "hall", 1}, Case{mode, "44100", 0.5F},
          Case{mode, "50%", 0.5F}, Case{labelled, "-24 db", 0.5F}, Case{labelled, "12dB", 1},
          // Texts go ahead, unless there are several of them.
          Case{ratio, "2", 0.25F}, Case{ratio, "2: 1", 0.25F}, Case{ratio, "50%", 0.75F}, Case{ratio, "3", 0.75F},
          Case{ratio, "4", 1}}) {
        ParameterValue const value = one.scale.Read(one.text);
        EXPECT_FLOAT_EQ(value.normalized, one.normalized) << one.text;
        EXPECT_FALSE(value.betweenSteps) << one.text;
    }
    EXPECT_EQ(gain.Read("-24").display, -24);
    EXPECT_EQ(gain.Read("50%").display, std::nullopt);
}

TEST(ParameterScaleTest, WhatLiesBetweenStepsBecomesTheNearest) {
    ParameterScale const mode(new TestInfo(0, 3, {u"A", u"B", u"C", u"D"}));
    for (auto const& [text, step, between] :
         {std::tuple("1.4", 1, true), std::tuple("50%", 2, true), std::tuple("99%", 3, true),
          std::tuple("33.333%", 1, false), std::tuple("2.00001", 2, false), std::tuple("2.9", 3, true)}) {
        ParameterValue const value = mode.Read(text);
        EXPECT_FLOAT_EQ(value.normalized, static_cast<float>(step) / 3) << text;
        EXPECT_EQ(value.betweenSteps, between) << text;
    }
    EXPECT_EQ(mode.Describe(1), "D");
}

TEST(ParameterScaleTest, EverythingElseIsRefusedWithTheRange) {
    ParameterScale const gain(new TestInfo(-60, 12));
    for (char const* const text : {"", "loud", "12.01", "-61", "nan", "inf", "-inf", "1e999", "101%", "-1%", "%",
                                   "nan%", "1 2", "0x1", "--1", "+-1", "3dB"})
        EXPECT_EQ(FailureOf([&] { gain.Read(text); }),
                  "2 \"Test\" cannot be \"" + std::string(text) +
                      "\": it goes from -60 to 12, or from 0% to 100% of that range");
    ParameterScale const mode(new TestInfo(0, 2, {u"Off", u"Off", u"On"}));
    EXPECT_TRUE(FailureOf([&] { mode.Read("In"); }).ends_with(", or is one of \"Off\", \"Off\", \"On\""));
    EXPECT_NE(FailureOf([&] { mode.Read("off"); }).find("several"), std::string::npos);
}

TEST(ParameterScaleTest, PluginThatHasNoNumberForAValueFails) {
    float const nan = std::numeric_limits<float>::quiet_NaN();
    for (auto const& [low, high] : {std::pair(nan, 1.0F), std::pair(5.0F, 5.0F)}) {
        ParameterScale const broken(new TestInfo(low, high));
        EXPECT_FLOAT_EQ(broken.Read("25%").normalized, 0.25F);
        try {
            ADD_FAILURE() << FailureOf([&] { broken.Read("5"); });
        } catch (std::runtime_error const& error) {
            EXPECT_STREQ(error.what(), "the plug-in turns 5 into no value of its parameter \"Test\"");
        }
    }
}

TEST(ParameterSettingTest, TheLastEqualsSignParts) {
    ParameterSetting const setting = ParseParameterSetting("A=B=1");
    EXPECT_EQ(setting.parameter, "A=B");
    EXPECT_EQ(setting.value, "1");
    for (char const* const wrong : {"Gain 1", "=3", " =3"})
        EXPECT_NE(FailureOf([&] { ParseParameterSetting(wrong); }), "none") << wrong;
}

} // namespace
