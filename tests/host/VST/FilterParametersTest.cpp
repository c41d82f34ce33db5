#include "FilterFixture.h"

#include "vynaudiofilterhost/VST/src/VSTParameterInfo.h"

#include <cmath>
#include <limits>

namespace {

using namespace vyntest;

class VSTFilterParametersTest : public VSTFilterTest {
protected:
    static VSTFixtureParameter& AddWithProperties(VSTFixtureConfiguration& configuration, std::int32_t flags) {
        VSTFixtureParameter& added = configuration.AddParameter("Known");
        added.hasProperties = true;
        added.propertiesFlags = flags;
        return added;
    }
};

TEST_F(VSTFilterParametersTest, NamesAndLabelsAreReadOnceAsUTF8) {
    VSTFixtureConfiguration configuration;
    configuration
        .AddParameter("Gr\xC3\xB6\xC3\x9F"
                      "e")
        .label = "\xC2\xB5s";
    AddWithProperties(configuration, 0).propertiesLabel = "dB";
    configuration.AddParameter("").label = "";
    Open(configuration);
    ASSERT_EQ(filter->GetParameterCount(), 3);
    EXPECT_EQ(filter->GetParameterInfo(0)->GetName(), u"Gr\u00F6\u00DFe");
    EXPECT_EQ(filter->GetParameterInfo(0)->GetLabel(), u"\u00B5s");
    EXPECT_EQ(filter->GetParameterInfo(1)->GetLabel(), u"dB");
    EXPECT_EQ(filter->GetParameterInfo(2)->GetName(), u"");
    EXPECT_EQ(filter->GetParameterInfo(0)->GetUnit(), kParameterUnitNone);
    EXPECT_EQ(filter->GetParameterInfo(0), filter->GetParameterInfo(0));
    EXPECT_EQ(fixture->CountCalls(effGetParamLabel), 2) << "a label among the properties is enough";
    EXPECT_EQ(fixture->CountCalls(effGetParamName), 3);
}

TEST_F(VSTFilterParametersTest, TextsEndWithTheirBuffer) {
    VSTFixtureConfiguration configuration;
    VSTFixtureParameter& exact = configuration.AddParameter("");
    exact.name = exact.label = exact.display = VSTFixtureText::Filled(127, true);
    VSTFixtureParameter& endless = configuration.AddParameter("");
    endless.name = endless.label = endless.display = VSTFixtureText::Filled(128, false);
    AddWithProperties(configuration, 0).propertiesLabel = VSTFixtureText::Filled(64, false);
    Open(configuration);
    for (int index : {0, 1}) {
        UString const text(static_cast<std::size_t>(127 + index), u'x');
        auto const info = filter->GetParameterInfo(index);
        EXPECT_EQ(info->GetName(), text);
        EXPECT_EQ(info->GetLabel(), text);
        EXPECT_EQ(info->GetParameterString(0.0f), text);
        EXPECT_EQ(filter->GetParameterString(index), text);
    }
    EXPECT_EQ(filter->GetParameterInfo(2)->GetLabel(), UString(64, u'x'));
}

TEST_F(VSTFilterParametersTest, RangesAndStepsAreWhatTheEffectStates) {
    constexpr std::int32_t kRange = kVstParameterUsesIntegerMinMax;
    struct Case {
        bool known;
        std::int32_t flags, low, high, step;
        float lowBound, highBound;
        int steps;
    };
    VSTFixtureConfiguration configuration;
    Case const rows[] = {
        {true, kRange, 10, 20, 5, 10.0f, 20.0f, 0},
        {true, kRange | kVstParameterUsesIntStep, -10, 20, 5, -10.0f, 20.0f, 5},
        {true, kRange, 7, 7, 0, 0.0f, 1.0f, 0},
        {true, kVstParameterIsSwitch, 10, 20, 9, 0.0f, 1.0f, 1},
        {true, kVstParameterIsSwitch | kVstParameterUsesIntStep, 0, 0, 9, 0.0f, 1.0f, 9},
        {true, kRange, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), 0,
         -2147483648.0f, 2147483648.0f, 0},
        {false, kRange | kVstParameterIsSwitch, 10, 20, 5, 0.0f, 1.0f, 0},
    };
    for (Case const& row : rows) {
        VSTFixtureParameter& parameter = AddWithProperties(configuration, row.flags);
        parameter.hasProperties = row.known;
        parameter.minInteger = row.low;
        parameter.maxInteger = row.high;
        parameter.stepInteger = row.step;
    }
    Open(configuration);
    int index = 0;
    for (Case const& row : rows) {
        SCOPED_TRACE(index);
        auto const info = filter->GetParameterInfo(index++);
        EXPECT_FLOAT_EQ(info->GetLoBound(), row.lowBound);
        EXPECT_FLOAT_EQ(info->GetHiBound(), row.highBound);
        EXPECT_EQ(info->GetStepCount(), row.steps);
        float const middle = (row.lowBound + row.highBound) / 2.0f;
        EXPECT_FLOAT_EQ(info->FromNormalized(0.5f), middle);
        EXPECT_FLOAT_EQ(info->ToNormalized(middle), 0.5f);
        EXPECT_FALSE(info->SupportsStringForArbitraryValues());
    }
}

TEST_F(VSTFilterParametersTest, RampsAndAutomationAreAskedForEachTime) {
    VSTFixtureConfiguration configuration;
    AddWithProperties(configuration, kVstParameterCanRamp).canBeAutomated = false;
    AddWithProperties(configuration, 0);
    AddWithProperties(configuration, kVstParameterCanRamp).hasProperties = false;
    Open(configuration);
    fixture->ClearCalls();
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(filter->GetParameterInfo(0)->CanRamp());
        EXPECT_FALSE(filter->GetParameterInfo(0)->CanBeAutomated());
    }
    EXPECT_THAT(fixture->Names(), ElementsAre("effGetParameterProperties", "effCanBeAutomated",
                                              "effGetParameterProperties", "effCanBeAutomated"));
    EXPECT_FALSE(filter->GetParameterInfo(1)->CanRamp());
    EXPECT_TRUE(filter->GetParameterInfo(1)->CanBeAutomated());
    EXPECT_FALSE(filter->GetParameterInfo(2)->CanRamp());
}

TEST_F(VSTFilterParametersTest, ValuesGoStraightToTheEffectAndIndexesOfNobodyNowhere) {
    VSTFixtureConfiguration configuration;
    configuration.numParams = 3;
    Open(configuration);
    filter->Resume();
    fixture->ClearCalls();
    int const dirty = filter->GetParameterDirtyCount();
    filter->SetParameter(2, 0.75f);
    EXPECT_EQ(filter->GetParameter(2), 0.75f);
    EXPECT_THAT(fixture->Texts(), ElementsAre("setParameter(2, 0, null, 0.75)", "getParameter(2, 0, null, 0)"))
        << "a running effect gets a value at once, too";
    EXPECT_EQ(filter->GetParameterDirtyCount(), dirty + 1);
    filter->Suspend();
    fixture->ClearCalls();
    for (int const index : {-1, 3, 1 << 30}) {
        filter->SetParameter(index, 0.5f);
        EXPECT_EQ(filter->GetParameter(index), 0.0f);
        EXPECT_FALSE(filter->GetParameterInfo(index));
        filter->GetParameterString(index);
    }
    EXPECT_THAT(fixture->Names(), IsEmpty());
}

TEST_F(VSTFilterParametersTest, TextOfTheFilterIsTakenByteByByteAndElseTheNumber) {
    VSTFixtureConfiguration configuration;
    VSTFixtureParameter& degrees = configuration.AddParameter("Angle");
    degrees.display = "45\xB0";
    VSTFixtureParameter& silent = configuration.AddParameter("Silent");
    silent.value = 0.25f;
    configuration.AddParameter("Text").display = "\xC3\xA4";
    Open(configuration);
    EXPECT_EQ(filter->GetParameterString(0), u"45\u00B0");
    EXPECT_EQ(filter->GetParameterString(1), u"0.25");
    EXPECT_EQ(filter->GetParameterString(2), u"\u00C3\u00A4");
    EXPECT_EQ(filter->GetParameterInfo(2)->GetParameterString(0.9f), u"\u00E4") << "the info's text is UTF-8";
    EXPECT_EQ(filter->GetParameterInfo(1)->GetParameterString(0.9f), u"");
}

TEST_F(VSTFilterParametersTest, WhatTheEffectThrowsIsNoTextAndNoRange) {
    VSTFixtureConfiguration configuration;
    AddWithProperties(configuration, kVstParameterUsesIntegerMinMax | kVstParameterCanRamp).maxInteger = 9;
    for (std::int32_t const opcode :
         {effGetParamName, effGetParamDisplay, effGetParameterProperties, effCanBeAutomated}) {
        Open(configuration.ThrowIn(opcode));
        ASSERT_EQ(filter->GetParameterCount(), 1);
        auto const info = filter->GetParameterInfo(0);
        bool const noProperties = opcode == effGetParameterProperties;
        EXPECT_EQ(info->GetName(), opcode == effGetParamName ? u"" : u"Known");
        EXPECT_EQ(info->GetHiBound(), noProperties ? 1.0f : 9.0f);
        EXPECT_EQ(info->CanRamp(), !noProperties);
        EXPECT_EQ(info->CanBeAutomated(), opcode != effCanBeAutomated);
        EXPECT_EQ(filter->GetParameterString(0), u"0.5");
    }
}

TEST_F(VSTFilterParametersTest, InfoOutlivesItsFilterAndAsksNoEffectThen) {
    Open({});
    auto const info = filter->GetParameterInfo(0);
    filter.reset();
    fixture->ClearCalls();
    EXPECT_EQ(info->GetName(), u"Parameter 0");
    EXPECT_EQ(info->GetParameterString(0.0f), u"");
    EXPECT_FALSE(info->CanRamp());
    EXPECT_FALSE(info->CanBeAutomated());
    EXPECT_THAT(fixture->Names(), IsEmpty());
    EXPECT_ANY_THROW(VSTParameterInfo(nullptr, 0));
}

} // namespace
