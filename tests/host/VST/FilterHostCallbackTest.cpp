#include "FilterFixture.h"

#include "vynaudiofilterhost/IAudioFilterHost.h"
#include "vynaudiofilterhost/inventory/PluginModule.h"
#include "vynaudiofilterhost/VST/src/VSTAudioFilter.h"
#include "vyncore/debug/Trace.h"

#include <cstring>
#include <thread>

namespace {

using namespace vyntest;

constexpr std::int32_t kVendorLanguage = 0x70400000;

/// A transport as the test says; tells of nothing while `knows` is false.
struct Transport final : IAudioFilterHost {
    bool GetPlaybackState(PlaybackState& given) override {
        if (knows)
            given = state;
        else
            given.mTempo = 1.0;
        return knows;
    }

    PlaybackState state;
    bool knows = true;
};

class VSTHostCallbackTest : public VSTFilterTest {
protected:
    VstTimeInfo const* AskTime() { return reinterpret_cast<VstTimeInfo const*>(fixture->CallHost(audioMasterGetTime)); }

    std::intptr_t CanDo(std::string question) { return fixture->CallHost(audioMasterCanDo, 0, 0, question.data()); }

    std::int64_t OnAnotherThread(std::int32_t opcode) {
        std::int64_t answer = -1;
        std::thread([&] { answer = fixture->CallHost(opcode); }).join();
        return answer;
    }

    VSTAudioFilter& VSTFilter() { return dynamic_cast<VSTAudioFilter&>(*filter); }

    /// Something to tell editors apart by.
    static VSTAudioFilterEditor* Editor(std::uintptr_t number) {
        return reinterpret_cast<VSTAudioFilterEditor*>(number * 64);
    }
};

TEST_F(VSTHostCallbackTest, HostTellsOfItselfAndWhatItCanDo) {
    VSTFixtureConfiguration configuration;
    for (std::int32_t const during : {kVSTFixtureEntry + 0, effOpen + 0, effMainsChanged + 0, effClose + 0})
        for (std::int32_t const opcode : {audioMasterVersion, audioMasterGetVendorVersion, audioMasterGetLanguage})
            configuration.AddHostCall(
                {.during = during, .opcode = opcode, .withoutEffect = during == kVSTFixtureEntry});
    Open(configuration);
    filter->Resume();
    filter.reset();
    EXPECT_THAT(fixture->Answers(audioMasterVersion), ElementsAre(2400, 2400, 2400, 2400));
    EXPECT_THAT(fixture->Answers(audioMasterGetVendorVersion), Each(4));
    EXPECT_THAT(fixture->Answers(audioMasterGetLanguage), Each(1));

    Open({});
    char text[64];
    std::memset(text, '?', sizeof text);
    EXPECT_EQ(fixture->CallHost(audioMasterGetVendorString, 0, 0, text), 1);
    EXPECT_EQ(std::string_view(text, 15), std::string_view("Tolve Systems\0?", 15));
    std::memset(text, '?', sizeof text);
    EXPECT_EQ(fixture->CallHost(audioMasterGetProductString, 0, 0, text), 1);
    EXPECT_EQ(std::string_view(text, 7), std::string_view("Ondra\0?", 7));
    for (char const* const yes : {"sendVstTimeInfo", "SENDVSTTIMEINFO", "shellCategory", "shellcategory"})
        EXPECT_EQ(CanDo(yes), 1) << yes;
    for (char const* const no : {"", "sizeWindow", "sendVstTimeInf", "sendVstTimeInfo ", "sendVstEvents", "supplyIdle"})
        EXPECT_EQ(CanDo(no), 0) << no;
}

TEST_F(VSTHostCallbackTest, WhatTheHostDoesNotKnowIsAnsweredWithNothing) {
    Open({});
    Resume(64);
    for (std::int32_t opcode = -3; opcode < 60; ++opcode) {
        switch (opcode) {
        case audioMasterVersion:
        case audioMasterCurrentId:
        case audioMasterGetTime:
        case audioMasterIOChanged:
        case audioMasterGetVendorString:
        case audioMasterGetProductString:
        case audioMasterGetVendorVersion:
        case audioMasterGetLanguage:
            continue;
        default:
            char text[64] = "nothing";
            EXPECT_EQ(fixture->CallHost(opcode, 0, 0, text), 0) << opcode;
            EXPECT_STREQ(text, "nothing") << opcode;
        }
    }
}

TEST_F(VSTHostCallbackTest, VendorsOwnQuestionIsAnsweredWithTheLanguage) {
    Open({});
    int expected = 1;
    for (char16_t const* const locale :
         {u"de_DE", u"fr_FR", u"ja_JP", u"es_ES", u"it_IT", u"ko_KR", u"zh_CN", u"en_US", u"de_de", u"de", u"de_DE."}) {
        PluginModule::SetLocaleIdentifier(locale);
        std::int32_t number[2] = {-1, -1};
        EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, kVendorLanguage, 0, number), 0x11005678);
        EXPECT_EQ(number[0], expected < 8 ? expected : 0);
        EXPECT_EQ(number[1], -1) << "32 bits";
        ++expected;
    }
    PluginModule::SetLocaleIdentifier(u"en_US");
    std::int32_t untouched = -1;
    EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, kVendorLanguage + 1, 0, &untouched), 0);
    EXPECT_EQ(untouched, -1);
    EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, kVendorLanguage, 0, nullptr), 0);
}

TEST_F(VSTHostCallbackTest, AutomationIsHeardByTheEffectAndThenByListeners) {
    VSTFixtureConfiguration configuration;
    configuration.numParams = 3;
    Open(configuration);
    fixture->ClearCalls();
    std::vector<std::pair<int, float>> heard;
    filter->ConnectAutomatedParameterChange([&](int index, float value) {
        EXPECT_EQ(fixture->CountCalls(kVSTFixtureSetParameter), static_cast<int>(heard.size()) + 1);
        heard.emplace_back(index, value);
    });
    int const dirty = filter->GetParameterDirtyCount();
    EXPECT_EQ(fixture->CallHost(audioMasterAutomate, 2, 0, nullptr, 0.25f), 0);
    EXPECT_THAT(heard, ElementsAre(std::pair(2, 0.25f)));
    EXPECT_THAT(fixture->Texts({kVSTFixtureSetParameter}), ElementsAre("setParameter(2, 0, null, 0.25)"));
    EXPECT_NE(filter->GetParameterDirtyCount(), dirty);
    for (std::int32_t const wrong : {-1, 3, 1 << 30})
        EXPECT_EQ(fixture->CallHost(audioMasterAutomate, wrong, 0, nullptr, 0.5f), 0);
    EXPECT_EQ(heard.size(), 1u);
    filter->ConnectAutomatedParameterChange([](int, float) { throw std::runtime_error("listener"); });
    EXPECT_NO_THROW(fixture->CallHost(audioMasterAutomate, 0, 0, nullptr, 0.25f));
}

TEST_F(VSTHostCallbackTest, PinsOfTheFirstBusesAreConnected) {
    VSTFixtureConfiguration configuration;
    configuration.arrangements = VSTFixtureArrangements::Configured;
    Open(configuration.SetChannels(4, 3));
    filter->RequestBusConfiguration(Buses({2}), Buses({2}));
    ASSERT_EQ(filter->GetInputBuses().size(), 3u);
    for (std::int32_t channel = 0; channel < 5; ++channel)
        for (std::intptr_t const side : {0, 1, 2})
            EXPECT_EQ(fixture->CallHost(audioMasterPinConnected, channel, side), channel < 2 && side < 2 ? 0 : 1)
                << channel << ' ' << side;
    Open(VSTFixtureConfiguration().SetChannels(1, 6));
    EXPECT_EQ(fixture->CallHost(audioMasterPinConnected, 0, 0), 0);
    EXPECT_EQ(fixture->CallHost(audioMasterPinConnected, 1, 0), 1);
    EXPECT_EQ(fixture->CallHost(audioMasterPinConnected, 5, 1), 0);
}

TEST_F(VSTHostCallbackTest, NewsOfTheIOIsHonouredOnTheMainThreadAlone) {
    Open({});
    int heard = 0;
    filter->ConnectLatencyChanged([&] { ++heard; });
    EXPECT_EQ(fixture->CallHost(audioMasterIOChanged), 1);
    EXPECT_EQ(heard, 1);
    std::string traced;
    vyncore::debug::SetTraceSink([&traced](int level, std::string_view tag, std::string_view text) {
        traced = std::to_string(level) + ' ' + std::string(tag) + ' ' + std::string(text);
    });
    EXPECT_EQ(OnAnotherThread(audioMasterIOChanged), 0);
    vyncore::debug::SetTraceSink({});
    EXPECT_EQ(traced, "0 VSTAudioFilter VST: audioMasterIOChanged sent from non-main thread");
    EXPECT_EQ(heard, 1);
    fixture->Effect()->numOutputs = 8;
    fixture->Effect()->initialDelay = 99;
    EXPECT_EQ(fixture->CallHost(audioMasterIOChanged), 1);
    EXPECT_EQ(filter->GetNumberOfOutputChannels(), 2) << "the buses stay";
    EXPECT_EQ(filter->GetInitialDelay(), 99);
    fixture->Effect()->numOutputs = 2;
}

TEST_F(VSTHostCallbackTest, TimeIsToldWhileTheFilterRuns) {
    VSTFixtureConfiguration configuration;
    for (std::int32_t const during :
         {kVSTFixtureEntry + 0, effOpen + 0, effStartProcess + 0, effStopProcess + 0, effClose + 0})
        configuration.AddHostCall({.during = during, .opcode = audioMasterGetTime});
    Open(configuration);
    EXPECT_EQ(AskTime(), nullptr) << "suspended";
    filter->Resume();
    VstTimeInfo const* const time = AskTime();
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(AskTime(), time) << "the same record every time";
    std::int64_t const address = reinterpret_cast<std::intptr_t>(time);
    filter->Suspend();
    EXPECT_EQ(AskTime(), nullptr);
    filter.reset();
    EXPECT_THAT(fixture->Answers(audioMasterGetTime), ElementsAre(0, 0, address, address, 0));
}

TEST_F(VSTHostCallbackTest, EffectMayCallWhatItLikesWhileItOpensAndCloses) {
    for (std::int32_t const during : {effOpen, effGetPlugCategory, effSetBlockSize, effGetParamName, effClose}) {
        VSTFixtureConfiguration configuration;
        for (std::int32_t const opcode : {audioMasterAutomate, audioMasterPinConnected, audioMasterGetTime,
                                          audioMasterIOChanged, audioMasterBeginEdit, audioMasterVendorSpecific})
            configuration.AddHostCall({.during = during, .opcode = opcode});
        Open(configuration);
        ASSERT_TRUE(filter);
        filter.reset();
        EXPECT_THAT(fixture->Answers(audioMasterGetTime), ElementsAre(0)) << during;
        EXPECT_THAT(fixture->Answers(audioMasterBeginEdit), ElementsAre(0)) << during;
    }
}

TEST_F(VSTHostCallbackTest, TimeWithoutAHostIsThatOfTheStart) {
    Open({});
    filter->SetSampleRate(96000.0f);
    filter->Resume();
    VstTimeInfo const first = *AskTime();
    EXPECT_EQ(first.flags, 0x2F00 | kVstTransportPlaying | kVstTransportChanged);
    VstTimeInfo const second = *AskTime();
    EXPECT_EQ(second.flags, 0x2F00 | kVstTransportPlaying) << "the change is told once";
    EXPECT_GE(second.nanoSeconds, first.nanoSeconds);
    EXPECT_GT(first.nanoSeconds, 0.0);
    EXPECT_EQ(first.sampleRate, 96000.0);
    EXPECT_EQ(first.samplePos + first.ppqPos + first.barStartPos + first.cycleStartPos + first.cycleEndPos, 0.0);
    EXPECT_EQ(first.tempo, 120.0);
    EXPECT_EQ(first.timeSigNumerator, 4);
    EXPECT_EQ(first.timeSigDenominator, 4);
    EXPECT_EQ(first.smpteFrameRate, 1);
    EXPECT_EQ(first.smpteOffset + first.samplesToNextClock, 0);
    filter->Suspend();
    filter->Resume();
    EXPECT_NE(AskTime()->flags & kVstTransportChanged, 0);
}

TEST_F(VSTHostCallbackTest, TimeIsThatOfTheHostAndTheLastOneWhenItKnowsNone) {
    Open({});
    Transport transport;
    transport.state.mSamplePosition = (1LL << 40) + 1;
    transport.state.mTempo = 90.5;
    transport.state.mMusicalPosition = 17.25;
    transport.state.mBarStartPosition = 15.0;
    transport.state.mTimeSignatureNumerator = 7;
    transport.state.mTimeSignatureDenominator = 8;
    transport.state.mIsLooping = transport.state.mIsRecording = true;
    transport.state.mIsPlaying = false;
    filter->SetAudioFilterHost(&transport);
    filter->Resume();
    AskTime();
    for (bool const knows : {true, false}) {
        transport.knows = knows;
        transport.state.mTempo = knows ? 90.5 : 60.0;
        VstTimeInfo const time = *AskTime();
        EXPECT_EQ(time.samplePos, 1099511627777.0);
        EXPECT_EQ(time.tempo, 90.5);
        EXPECT_EQ(time.ppqPos, 17.25);
        EXPECT_EQ(time.barStartPos, 15.0);
        EXPECT_EQ(time.timeSigNumerator, 7);
        EXPECT_EQ(time.timeSigDenominator, 8);
        EXPECT_EQ(time.flags, 0x2F00 | kVstTransportPlaying) << "playing is what the filter does";
    }
    filter->Suspend();
    filter->Resume();
    EXPECT_EQ(AskTime()->samplePos, 0.0) << "a filter that resumes begins anew";
    EXPECT_EQ(AskTime()->tempo, 90.5);
    filter->Suspend();
    filter->SetAudioFilterHost(nullptr);
}

TEST_F(VSTHostCallbackTest, OpenEditorsAnswerFirstInTheOrderOfTheirAddresses) {
    Open({});
    std::vector<int> asked;
    std::intptr_t firstAnswer = 0;
    auto const answering = [&asked](int number, std::intptr_t const& answer) {
        return [&asked, &answer, number](std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr,
                                         float opt) {
            EXPECT_EQ(opcode, audioMasterSizeWindow);
            EXPECT_EQ(std::tuple(index, value, ptr, opt), std::tuple(300, 200, static_cast<void*>(&asked), 0.5f));
            asked.push_back(number);
            return answer;
        };
    };
    std::intptr_t const seven = 7;
    VSTFilter().AddEditorCallback(Editor(2), answering(2, seven));
    VSTFilter().AddEditorCallback(Editor(1), answering(1, firstAnswer));
    VSTFilter().AddEditorCallback(Editor(1), answering(99, seven));
    auto const ask = [&] { return fixture->CallHost(audioMasterSizeWindow, 300, 200, &asked, 0.5f); };
    EXPECT_EQ(ask(), 7);
    EXPECT_THAT(asked, ElementsAre(1, 2));
    asked.clear();
    firstAnswer = 1;
    EXPECT_EQ(ask(), 1);
    EXPECT_THAT(asked, ElementsAre(1));
    VSTFilter().RemoveEditorCallback(Editor(1));
    VSTFilter().RemoveEditorCallback(Editor(2));
    VSTFilter().RemoveEditorCallback(Editor(2));
    asked.clear();
    EXPECT_EQ(ask(), 0);
    EXPECT_THAT(asked, IsEmpty());
}

} // namespace
