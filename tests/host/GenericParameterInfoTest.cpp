#include "vynaudiofilterhost/GenericParameterInfo.h"
#include "vyncore/config/Localizer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace vynaudiofilterhost;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

GenericParameterInfo Info(int unit, float lo, float hi, bool logarithmic = false, std::uint64_t wholeDigits = 1) {
    return {u"Name", u"dB", AudioFilterParameterInfoUnit{unit}, 7, lo, hi, true, logarithmic, wholeDigits, 1};
}

TEST(GenericParameterInfoTest, MapsEvenlyOrLogarithmicallyWithoutAnEnd) {
    auto even = Info(0, -2.0f, 6.0f);
    EXPECT_EQ(even.FromNormalized(0.25f), 0.0f);
    EXPECT_EQ(even.ToNormalized(0.0f), 0.25f);
    EXPECT_EQ(even.FromNormalized(2.0f), 14.0f);
    EXPECT_EQ(even.ToNormalized(-4.0f), -0.25f);
    even.SetLoBound(1.0f);
    even.SetHiBound(3.0f);
    EXPECT_EQ(even.FromNormalized(0.5f), 2.0f);

    AudioFilterParameterInfo const& logarithmic = Info(0, 20.0f, 6.9f, true);
    EXPECT_EQ(logarithmic.FromNormalized(0.0f), 20.0f);
    EXPECT_FLOAT_EQ(logarithmic.FromNormalized(1.0f), 20.0f * std::exp(6.9f));
    EXPECT_FLOAT_EQ(logarithmic.ToNormalized(20.0f * std::exp(6.9f)), 1.0f);
    EXPECT_EQ(logarithmic.GetLoBound(), 20.0f);
    EXPECT_EQ(logarithmic.GetHiBound(), 6.9f);
}

TEST(GenericParameterInfoTest, ANumberPrintsByItsSizeAndAWholeOneEndsWhereAnIntDoes) {
    struct Case {
        float value;
        char16_t const* decimal;
        char16_t const* whole;
    };
    for (auto const& [value, decimal, whole] : {Case{0.0f, u"0.0000", u"0"},
                                                {0.1f, u"0.1000", u"0"},
                                                {0.25f, u"0.250", u"0"},
                                                {1.0f, u"1.000", u"1"},
                                                {2.9f, u"2.90", u"2"},
                                                {10.0f, u"10.00", u"10"},
                                                {100.0f, u"100.0", u"100"},
                                                {100.5f, u"100", u"100"},
                                                {-0.1f, u"-0.1000", u"0"},
                                                {-2.9f, u"-2.90", u"-2"},
                                                {2147483520.0f, u"2147483520", u"2147483520"},
                                                {2147483648.0f, u"2147483648", u"2147483647"},
                                                {-2147483904.0f, u"-2147483904", u"-2147483648"},
                                                {kInfinity, u"inf", u"2147483647"},
                                                {-kInfinity, u"-inf", u"-2147483648"},
                                                {kNaN, u"nan", u"0"}}) {
        for (int const unit : {0, 1, 2, 4, 5})
            EXPECT_EQ(Info(unit, 0, 1).GetParameterString(value), decimal) << value;
        EXPECT_EQ(Info(6, 0, 1).GetParameterString(value), whole) << value;
        EXPECT_EQ(Info(7, 0, 1).GetParameterString(value), u"");
    }
    EXPECT_EQ(Info(0, 0, 1, false, 3).GetParameterString(0.5f), u"000.500");
    EXPECT_EQ(Info(0, 0, 1, false, (std::uint64_t{1} << 32) + 2).GetParameterString(2).size(), 102u);
}

TEST(GenericParameterInfoTest, ASwitchGoesByTheNormalizedValueAndWhatCannotBeAutomatedStartsHidden) {
    GenericParameterInfo info(u"Name", u"", kParameterUnitOnOff, 0, 10, -10, false, false, 1, 1);
    for (auto const& [value, text] : {std::pair{0.5f, u"On"}, {0.49f, u"Off"}, {kInfinity, u"On"}, {kNaN, u"Off"}})
        EXPECT_EQ(info.GetParameterString(value), text);
    EXPECT_FALSE(info.CanBeAutomated() || info.IsExposed());
    info.SetExposed(true);
    EXPECT_TRUE(info.IsExposed() && Info(0, 0, 1).IsExposed());
    auto& localizer = vyncore::config::Localizer::Get();
    localizer.SetTranslation("vynaudiofilterhost/ParameterInfo/On", u"An");
    EXPECT_EQ(Info(3, 0, 1).GetParameterString(1.0f), u"An");
    localizer.SetTranslation("vynaudiofilterhost/ParameterInfo/On", u"On");
}

// What a subclass has that says nothing but how values map.
TEST(AudioFilterParameterInfoTest, DefaultsAreThoseOfASmoothParameter) {
    struct Plain : AudioFilterParameterInfo {
        float ToNormalized(float displayValue) const override { return displayValue / 8.0f; }
        float FromNormalized(float value) const override { return 8.0f * value + 2.0f; }
        vyncore::UString GetParameterString(float) const override { return {}; }
    } const plain;
    EXPECT_EQ(plain.GetLoBound(), 2.0f);
    EXPECT_EQ(plain.GetHiBound(), 10.0f);
    EXPECT_EQ(plain.GetDisplayStep(), 0.01f);
    EXPECT_EQ(plain.GetStepCount(), 0);
    EXPECT_TRUE(plain.CanBeAutomated() && plain.SupportsStringForArbitraryValues());
    EXPECT_FALSE(plain.CanRamp() || plain.SupportsDisplayValueToParameter());
    EXPECT_TRUE(plain.IsExposed() && plain.IsPersisted());
}

} // namespace
