#include "FilterFixture.h"

#include "support/TemporaryFolder.h"

#include <climits>
#include <filesystem>
#include <thread>

namespace {

using namespace vyntest;

using VSTFilterLifecycleTest = VSTFilterTest;

TEST_F(VSTFilterLifecycleTest, WholeLifeMakesItsCallsInOrder) {
    VSTFixtureConfiguration configuration;
    configuration.AddParameter("Gain");
    configuration.AddParameter("Switch").hasProperties = true;
    Open(configuration);
    ASSERT_TRUE(filter);
    EXPECT_EQ(fixture->TakeNames(),
              Joined({{"VSTPluginMain"},
                      ConstructionCalls(1),
                      {"effGetParameterProperties", "effGetParamName", "effGetParameterProperties"}}))
        << "a label that is among the properties is not asked for again";

    filter->SetSampleRate(48000.0f);
    filter->SetBlockSize(256);
    filter->SetBlockSize(256);
    EXPECT_THAT(TakeTexts(), ElementsAre("effSetSampleRate(0, 0, null, 48000)", "effSetBlockSize(0, 256, null, 0)",
                                         "effSetBlockSize(0, 256, null, 0)"));
    filter->RequestBusConfiguration(Buses({2}), Buses({2}));
    EXPECT_THAT(fixture->TakeNames(),
                ElementsAre("effGetVstVersion", "effSetSpeakerArrangement", "effGetSpeakerArrangement"));

    filter->Resume();
    EXPECT_THAT(TakeTexts(), ElementsAre("effMainsChanged(0, 1, null, 0)", "effStartProcess(0, 0, null, 0)"));
    SampleBlock in(2, 256), out(2, 256);
    std::thread([&] { Render(in, out, 256), Render(in, out, 100); }).join();
    EXPECT_THAT(fixture->Texts(),
                ElementsAre("processReplacing(0, 256, pointer, 0)", "processReplacing(0, 100, pointer, 0)"));
    EXPECT_NE(fixture->Calls().front().thread, FixtureThread());
    fixture->ClearCalls();
    filter->Suspend();
    EXPECT_THAT(TakeTexts(), ElementsAre("effStopProcess(0, 0, null, 0)", "effMainsChanged(0, 0, null, 0)"));
    filter.reset();
    EXPECT_THAT(fixture->TakeNames(), ElementsAre("effClose"));
}

TEST_F(VSTFilterLifecycleTest, EffectIsToldARateAndABlockSizeBeforeAnythingElse) {
    Open({});
    auto const texts = fixture->Texts({effSetSampleRate, effSetBlockSize});
    EXPECT_THAT(texts, ElementsAre("effSetSampleRate(0, 0, null, 44100)", "effSetBlockSize(0, 2048, null, 0)"));
    EXPECT_TRUE(filter->IsSuspended());
    EXPECT_EQ(filter->GetMaxProcessingBlockSize(), 1024);
    EXPECT_FALSE(filter->RequiresSymmetricIO());
    fixture->ClearCalls();
    filter->SetCurrentOffset(1LL << 40);
    filter->SetRenderingContext(kRenderingContextOffline);
    EXPECT_EQ(filter->GetTail(), 0);
    EXPECT_THAT(fixture->TakeNames(), IsEmpty()) << "no word of these to the effect";
    filter->SetBlockSize(64);
    filter->Resume();
    filter->Resume();
    EXPECT_EQ(fixture->CountCalls(effMainsChanged), 2);
    EXPECT_EQ(fixture->CountCalls(effStartProcess), 2);
}

TEST_F(VSTFilterLifecycleTest, MusicDeviceIsWhatTheFlagsOrTheCategorySay) {
    struct Case {
        std::int32_t flags;
        std::int32_t category;
        bool isMusicDevice;
        bool isAsked;
    };
    for (Case const& row : {Case{effFlagsCanReplacing, kPlugCategEffect, false, true},
                            Case{effFlagsCanReplacing, kPlugCategSynth, true, true},
                            Case{effFlagsCanReplacing | effFlagsIsSynth, kPlugCategEffect, true, false},
                            Case{effFlagsCanReplacing, kPlugCategGenerator, false, true}}) {
        VSTFixtureConfiguration configuration;
        configuration.flags = row.flags;
        configuration.category = row.category;
        Open(configuration);
        EXPECT_EQ(filter->IsMusicDevice(), row.isMusicDevice) << row.flags << ' ' << row.category;
        EXPECT_EQ(fixture->CountCalls(effGetPlugCategory), row.isAsked ? 1 : 0);
        EXPECT_EQ(fixture->Names()[row.isAsked ? 2 : 1], "effOpen");
    }
}

TEST_F(VSTFilterLifecycleTest, CountsThatTurnAbsurdWhenItOpensAreTakenAsNone) {
    for (std::int32_t const count : {-1, INT_MAX}) {
        VSTFixtureConfiguration configuration;
        configuration.change = {
            .during = effOpen, .numInputs = count, .numOutputs = count, .numParams = count, .numPrograms = count};
        Open(configuration);
        ASSERT_TRUE(filter) << count;
        EXPECT_EQ(filter->GetParameterCount(), 0) << count;
        EXPECT_EQ(filter->GetNumFactoryPresets(), 0) << count;
        EXPECT_EQ(filter->GetNumberOfInputChannels() + filter->GetNumberOfOutputChannels(), 0) << count;
        EXPECT_EQ(fixture->CountCalls(effGetParamName), 0) << count;
        EXPECT_EQ(filter->GetFactoryPresetName(0), u"");
    }
}

TEST_F(VSTFilterLifecycleTest, ParametersThatComeLaterAreNotFollowed) {
    VSTFixtureConfiguration configuration;
    configuration.numParams = 4;
    Open(configuration);
    fixture->Effect()->numParams = 2;
    for (int index = 0; index < filter->GetParameterCount(); ++index)
        EXPECT_TRUE(filter->GetParameterInfo(index)) << index;
    fixture->Effect()->numParams = 9;
    for (int index = 0; index < filter->GetParameterCount(); ++index)
        EXPECT_NO_THROW(filter->GetParameterInfo(index)) << index;
}

TEST_F(VSTFilterLifecycleTest, OneEffectIsKnownToNeedMuchTime) {
    TemporaryFolder const folder;
    for (auto const& [file, number, high] : {std::tuple("SimpleMastering.so", u"2:1517179725 SimpleMastering", true),
                                             std::tuple("SimpleMastering.so", u"2:1517179726 SimpleMastering", false),
                                             std::tuple("Other.so", u"2:1517179725 SimpleMastering", false)}) {
        auto const path = folder.Path() / file;
        std::filesystem::copy_file(VSTFixtureModule::Path("configurable.so"), path,
                                   std::filesystem::copy_options::skip_existing);
        auto const loaded = FindOrLoadVSTModule(path.u16string());
        ASSERT_TRUE(loaded);
        auto const made = loaded->CreateAudioFilter(number);
        ASSERT_TRUE(made);
        EXPECT_EQ(made->GetHasHighCPU(), high) << file;
    }
}

} // namespace
