#include "FilterFixture.h"

#include "vynaudiofilterhost/VST3/src/ParameterPointQueues.h"
#include "vynaudiofilterhost/VST3/src/VST3ParameterList.h"

#include <algorithm>
#include <map>
#include <random>
#include <tuple>

namespace {

using namespace vyntest;

using FilterParametersTest = FilterTest;

TEST_F(FilterParametersTest, OnlyWhatTheUserMaySetIsShown) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(3).AddBypass().AddReadOnly();
    for (int ordinary = 0; ordinary < 6; ++ordinary)
        configuration.AddParameter(ordinary % 2, u"Late");
    Open(configuration);
    EXPECT_EQ(configuration.parameterCount, 10);
    ASSERT_EQ(filter->GetParameterCount(), 7);
    EXPECT_EQ(filter->GetParameterInfo(0)->GetName(), u"Parameter 0");
    EXPECT_EQ(filter->GetParameterInfo(1)->GetName(), u"Late");
    EXPECT_FALSE(filter->GetParameterInfo(1)->IsExposed());
    EXPECT_TRUE(filter->GetParameterInfo(2)->IsExposed());
    filter->SetParameter(6, 0.75f);
    EXPECT_EQ(filter->GetParameter(6), 0.75f);
    EXPECT_EQ(filter->GetParameter(7), 0.0f);
    EXPECT_FALSE(filter->GetParameterInfo(7));
}

TEST_F(FilterParametersTest, EditOfTheControllersOwnValueIsNotSentBack) {
    Open({});
    fixture->ClearCalls();
    for (double const value : {0.5, 0.25})
        EXPECT_EQ((*fixture)->callHost(FixtureHostCall::PerformEdit, 0, value), 0);
    EXPECT_EQ(fixture->CountCalls("setParamNormalized"), 1);
    Resume();
    EXPECT_EQ(fixture->LastBlock().points[0].value, 0.25);
}

TEST_F(FilterParametersTest, RestartRequestsAreAnsweredByTheirFlags) {
    struct Case {
        unsigned flags;
        int result, latencies, properties, titlesRead;
    };
    for (int const parameters : {3, 0}) {
        Open({.parameterCount = parameters});
        int latencies = 0, properties = 0;
        filter->ConnectLatencyChanged([&] { ++latencies; });
        filter->ConnectParameterPropertiesChanged([&] { ++properties; });
        for (Case const& row : {Case{1, 0, 1, 0, 0}, Case{2, 1, 0, 0, 0}, Case{4, 0, 0, 1, 0}, Case{8, 0, 1, 0, 0},
                                Case{16, 0, 0, 1, parameters}, Case{1 | 4 | 16, 0, 1, 1, parameters}}) {
            SCOPED_TRACE(testing::Message() << "flags " << row.flags << ", parameters " << parameters);
            latencies = properties = 0;
            fixture->ClearCalls();
            EXPECT_EQ((*fixture)->callHost(FixtureHostCall::RestartComponent, row.flags, 0.0), row.result);
            EXPECT_EQ(latencies, row.latencies);
            EXPECT_EQ(properties, row.properties);
            EXPECT_EQ(fixture->CountCalls("getParameterInfo"), row.titlesRead);
        }
    }
}

TEST_F(FilterParametersTest, FactoryPresetsAreTheProgramsOfTheRootUnit) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(5); // the parameter is 1 and has 4 steps
    Open(configuration);
    EXPECT_EQ(filter->GetNumFactoryPresets(), 5);
    EXPECT_EQ(filter->GetFactoryPresetName(4), u"List 0 Program 4");
    EXPECT_EQ(filter->GetFactoryPresetName(5), u"");
    EXPECT_EQ(filter->GetFactoryPresetName(-1), u"");
    fixture->ClearCalls();
    for (int const program : {0, 4, 5, -1})
        filter->SetFactoryPreset(program);
    std::vector<double> sent;
    for (FixtureCall const& call : fixture->Calls()) {
        if (std::string(call.name) == "setParamNormalized" && call.argument == 1)
            sent.push_back(call.value);
    }
    EXPECT_THAT(sent, ElementsAre(0.0, 1.0));
    Resume();
    EXPECT_EQ(fixture->LastBlock().points[0].id, 1u);
    EXPECT_EQ(fixture->LastBlock().points[0].value, 1.0);
    filter->Suspend();
    for (auto const& [rootIndex, rootList, unitOfProgram, programs] :
         {std::tuple(0, 0, 0, 5), std::tuple(2, 0, 0, 5), std::tuple(0, -1, 0, 0), std::tuple(0, 7, 0, 0),
          std::tuple(-1, 0, 0, 0), std::tuple(0, 0, 101, 5)}) {
        SCOPED_TRACE(testing::Message() << rootIndex << ' ' << rootList << ' ' << unitOfProgram);
        FixtureConfiguration units;
        units.AddPrograms(5);
        units.unitCount = 3;
        units.rootUnitIndex = rootIndex;
        units.rootProgramListId = rootList;
        units.special[0].unit = unitOfProgram;
        Open(units);
        EXPECT_EQ(filter->GetParameterCount(), 1);
        EXPECT_EQ(filter->GetNumFactoryPresets(), programs);
        fixture->ClearCalls();
        filter->SetFactoryPreset(1);
        EXPECT_EQ(fixture->CountCalls("setParamNormalized"), unitOfProgram == 0 ? 1 : 0);
        EXPECT_EQ(filter->CanSelectFactoryPreset(1), unitOfProgram == 0);
        EXPECT_FALSE(filter->CanSelectFactoryPreset(5));
    }
    Open({});
    EXPECT_EQ(filter->GetFactoryPresetName(0), u"");
}

// Whatever the order of the IDs is, and of equal ones the first.
TEST(ParameterListTest, FindsWhatAMapWouldFind) {
    std::minstd_rand random(5);
    for (int round = 0; round < 2000; ++round) {
        VST3ParameterList list;
        ParameterPointQueues queues;
        std::map<unsigned, int> indexes;
        int const count = static_cast<int>(random() % 12);
        for (int place = 0; place < count; ++place) {
            Steinberg::Vst::ParameterInfo info{};
            unsigned const number = static_cast<unsigned>(place);
            unsigned const noise = static_cast<unsigned>(random());
            unsigned const ids[] = {number, number + noise % 2, noise % 10, 2 * noise};
            info.id = ids[round % 4];
            list.Add(info.id);
            if (random() % 5 == 0)
                continue;
            indexes.emplace(info.id, list.GetCount());
            list.Show(place, info);
        }
        list.Finish();
        for (unsigned id = 0; id < 12; ++id)
            ASSERT_EQ(list.FindIndex(id), indexes.contains(id) ? indexes.at(id) : -1) << round;
        queues.SetParameters(list.GetIDs());
        std::vector<unsigned> expected;
        for (unsigned const id : list.GetIDs()) {
            ASSERT_EQ(list.FindIndex(id), indexes.contains(id) ? indexes.at(id) : -1) << round;
            queues.PushPoint(id, 0.5, 0);
            if (std::find(expected.begin(), expected.end(), id) == expected.end())
                expected.push_back(id);
        }
        std::vector<unsigned> seen;
        ParameterPointQueues copy = queues;
        copy.TakeChanged([&](unsigned id, ParameterPoint const&) {
            if (seen.empty() || seen.back() != id)
                seen.push_back(id);
        });
        ASSERT_EQ(seen, expected) << round;
    }
}

} // namespace
