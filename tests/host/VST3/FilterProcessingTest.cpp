#include "FilterFixture.h"

#include "support/NoAllocationScope.h"
#include "vyncore/debug/Trace.h"
#include "vyncore/threads/MainThreadCalls.h"

#include "pluginterfaces/vst/ivstevents.h"

#include <atomic>
#include <thread>

namespace {

using namespace vyntest;

using FilterProcessingTest = FilterTest;

class FakeHost : public IAudioFilterHost {
public:
    bool GetPlaybackState(PlaybackState& state) override {
        EXPECT_EQ(state.mTempo, 120.0);
        EXPECT_EQ(state.mTimeSignatureNumerator, 4);
        state.mTempo = 90.0;
        state.mMusicalPosition = 5.5;
        state.mBarStartPosition = 4.0;
        state.mIsRecording = true;
        return answer;
    }

    bool answer = true;
};

TEST_F(FilterProcessingTest, LongBlocksReachThePluginInSlices) {
    Open({});
    Resume();
    filter->SetParameter(0, 1.0f); // a gain of 2
    filter->SetCurrentOffset(100);
    fixture->ClearCalls();
    SampleBlock in(2, 2500), out(2, 2500);
    {
        NoAllocationScope const guard;
        EXPECT_EQ(Render(in, out, 2500).GetBits(), 0u);
    }
    EXPECT_THAT(fixture->CallTexts({"process"}),
                ElementsAre("Component.process(1024)", "Component.process(1024)", "Component.process(452)"));
    EXPECT_EQ(fixture->LastBlock().inputs.buffers[1], in[1].data() + 2048);
    EXPECT_EQ(fixture->LastBlock().projectTimeSamples, 100 + 2048);
    EXPECT_EQ(out[1][2499], 2.0f * in[1][2499]);
    EXPECT_EQ(out[0][1023], 2.0f * in[0][1023]);
    Render(in, out, 0);
    EXPECT_EQ(fixture->CountCalls("process"), 3);
    Render(in, out, 8);
    EXPECT_EQ(fixture->LastBlock().projectTimeSamples, 2600);
}

TEST_F(FilterProcessingTest, TransportIsToldAsFarAsTheHostKnowsIt) {
    Open({});
    Resume();
    SampleBlock block(2, 8);
    Render(block, block, 8);
    EXPECT_EQ(fixture->LastBlock().state, 2u);
    FakeHost host;
    filter->SetAudioFilterHost(&host);
    Render(block, block, 8);
    FixtureBlock const& seen = fixture->LastBlock();
    EXPECT_EQ(seen.state, 0x100u | 0x2E00u | 8u);
    EXPECT_EQ(seen.tempo, 90.0);
    EXPECT_EQ(seen.projectTimeMusic, 5.5);
    EXPECT_EQ(seen.barPositionMusic, 4.0);
    EXPECT_NE(seen.systemTime, 0);
    host.answer = false;
    Render(block, block, 8);
    EXPECT_EQ(fixture->LastBlock().state, 0x100u);
    filter->Suspend();
}

TEST_F(FilterProcessingTest, SilenceFlagsTravelBusByBusBothWays) {
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(3), FixtureBus::Make(3, u"Side", 1)},
                           {FixtureBus::Make(3), FixtureBus::Make(3)});
    Open(configuration);
    Resume();
    SampleBlock in(4, 8), out(4, 8);
    ChannelFlags const outFlags = Render(in, out, 8, 0b0100);
    EXPECT_EQ(fixture->LastBlock().inputs.silence[0], 0u);
    EXPECT_EQ(fixture->LastBlock().inputs.silence[1], 1u);
    EXPECT_EQ(outFlags.GetBits() >> 4, 0u) << "no bit beyond the filter's channels";
    EXPECT_EQ(Render(in, out, 8, 0b1111).GetBits(), 0b1111u);
}

TEST_F(FilterProcessingTest, ValuesSetBetweenBlocksArriveAsOnePointAndAreAllocatedNowhere) {
    Open({.parameterCount = 3});
    Resume();
    SampleBlock block(2, 8);
    filter->SetParameter(2, 0.25f);
    filter->SetParameter(2, 0.75f);
    filter->SetParameter(1, 0.5f);
    {
        NoAllocationScope const guard;
        Render(block, block, 8);
    }
    FixtureBlock const& seen = fixture->LastBlock();
    ASSERT_EQ(seen.pointCount, 2);
    EXPECT_EQ(seen.points[0].id, 1u);
    EXPECT_EQ(seen.points[1].id, 2u);
    EXPECT_EQ(seen.points[1].value, 0.75);
    Render(block, block, 8);
    EXPECT_TRUE(fixture->LastBlock().hasInputChanges);
    EXPECT_EQ(fixture->LastBlock().changeCount, 0);
    EXPECT_EQ(filter->GetParameter(2), 0.75f);
}

TEST_F(FilterProcessingTest, SuspendSendsPendingValuesWithoutAudio) {
    Open({});
    Resume();
    filter->Suspend();
    EXPECT_EQ(fixture->CountCalls("process"), 0);
    filter->Resume();
    filter->SetParameter(0, 0.5f);
    filter->Suspend();
    ASSERT_EQ(fixture->CountCalls("process"), 1);
    FixtureBlock const& seen = fixture->LastBlock();
    EXPECT_EQ(seen.numSamples, 0);
    EXPECT_EQ(seen.inputs.count, 0);
    EXPECT_FALSE(seen.inputs.present);
    EXPECT_EQ(seen.pointCount, 1);

    FixtureConfiguration configuration;
    Open(configuration.Fail(FixtureFault::ProcessThrows));
    Resume();
    filter->SetParameter(0, 0.5f);
    fixture->ClearCalls();
    filter->Suspend();
    EXPECT_THAT(fixture->CallTexts(),
                ElementsAre("Component.setProcessing(1)", "Component.process(0)", "Component.setActive(0)"));
}

TEST_F(FilterProcessingTest, PointsOfThePluginReachItsControllerWithTheTick) {
    Open({.outputPointCount = 101});
    Resume();
    SampleBlock block(2, 8);
    Render(block, block, 8);
    filter->EditorAttached();
    EXPECT_EQ(fixture->CountCalls("setParamNormalized"), 0) << "the tick is connected already";
    filter->EditorDetached();
    filter->Suspend();
    filter->EditorAttached(); // ticks at once
    auto const texts = fixture->CallTexts({"setParamNormalized"});
    EXPECT_EQ(texts.size(), 100u);
    EXPECT_EQ(fixture->Calls()[fixture->Calls().size() - 100].value, 1.0 / 1024.0)
        << "the first of 101 was overwritten";
    filter->EditorDetached();
}

TEST_F(FilterProcessingTest, FailingProcessIsTracedOnceAndThrowingEndsTheBlock) {
    static std::atomic<int> traces;
    traces = 0;
    vyncore::debug::SetTraceTagLevel("VST3AudioFilter::Process", 6);
    vyncore::debug::SetTraceSink(
        [](int, std::string_view tag, std::string_view) { traces += tag == "VST3AudioFilter::Process"; });
    FixtureConfiguration configuration;
    Open(configuration.Fail(FixtureFault::ProcessFails));
    SampleBlock block(2, 4096);
    for (int round = 1; round <= 2; ++round) {
        Resume();
        Render(block, block, 64);
        Render(block, block, 64);
        EXPECT_EQ(traces, round);
        filter->Suspend();
    }
    vyncore::debug::SetTraceSink({});
    vyncore::debug::ResetTraceLevels();

    for (FixtureFault const fault : {FixtureFault::ProcessThrows, FixtureFault::ProcessThrowsInt}) {
        FixtureConfiguration throwing;
        throwing.processFaultAt = 0;
        Open(throwing.Fail(fault));
        Resume();
        EXPECT_EQ(Render(block, block, 3000, 3).GetBits(), 0u);
        EXPECT_EQ(fixture->CountCalls("process"), 1);
        Render(block, block, 3000);
        EXPECT_EQ(fixture->CountCalls("process"), 4);
    }
}

TEST_F(FilterProcessingTest, MidiBecomesEventsOrMappedParameters) {
    FixtureConfiguration configuration;
    configuration.eventInputCount = 1;
    configuration.midiMapping = true;
    configuration.parameterCount = 3;
    configuration.midiAssignments[0] = {1, 2};   // modulation wheel
    configuration.midiAssignments[1] = {129, 1}; // pitch bend
    Open(configuration);
    Resume();
    SampleBlock block(2, 64);
    filter->ScheduleMIDIEvent(true, 5, 0x93, 60, 127);
    filter->ScheduleMIDIEvent(false, 6, 0x83, 60, 0);
    filter->ScheduleMIDIEvent(false, 7, 0xA3, 60, 127);
    filter->ScheduleMIDIEvent(false, 8, 0xC3, 9, 0);   // program change: dropped
    filter->ScheduleMIDIEvent(false, 9, 0xB3, 7, 100); // not assigned: dropped
    filter->ScheduleMIDIEvent(false, 10, 0xB3, 1, 127);
    filter->ScheduleMIDIEvent(false, 11, 0xE3, 0x7F, 0x7F);
    Render(block, block, 64);
    FixtureBlock const& seen = fixture->LastBlock();
    ASSERT_EQ(seen.eventCount, 3);
    EXPECT_EQ(seen.events[0].type, Steinberg::Vst::Event::kNoteOnEvent);
    EXPECT_EQ(seen.events[0].offset, 5);
    EXPECT_EQ(seen.events[0].channel, 3);
    EXPECT_EQ(seen.events[0].amount, 1.0f);
    EXPECT_EQ(seen.events[0].flags, 1u);
    EXPECT_EQ(seen.events[1].type, Steinberg::Vst::Event::kNoteOffEvent);
    EXPECT_EQ(seen.events[2].type, Steinberg::Vst::Event::kPolyPressureEvent);
    ASSERT_EQ(seen.pointCount, 2);
    EXPECT_EQ(seen.points[0].offset, 0);
    EXPECT_EQ(seen.points[0].value, 1.0);
    EXPECT_EQ(seen.points[1].value, 1.0);
    for (int event = 0; event < 2049; ++event)
        filter->ScheduleMIDIEvent(false, 0, 0x90, 60, 0);
    Render(block, block, 64);
    EXPECT_EQ(fixture->LastBlock().eventCount, 2048);
    EXPECT_EQ(fixture->LastBlock().events[0].type, Steinberg::Vst::Event::kNoteOnEvent);
    Render(block, block, 64);
    EXPECT_EQ(fixture->LastBlock().eventCount, 0);
    filter->ScheduleMIDIEvent(false, 0, 0xE0, 0, 64);
    filter->ScheduleMIDIEvent(false, 0, 0xD0, 127, 1); // channel pressure, not assigned: dropped
    Render(block, block, 64);
    EXPECT_EQ(fixture->LastBlock().points[0].value, 8192.0 / 16383.0);
    EXPECT_EQ(fixture->LastBlock().pointCount, 1);
    filter->Suspend();

    Open({});
    Resume();
    filter->ScheduleMIDIEvent(false, 0, 0x90, 60, 1);
    Render(block, block, 64);
    EXPECT_FALSE(fixture->LastBlock().hasInputEvents);
}

TEST_F(FilterProcessingTest, LatencyIsCachedWhileRunning) {
    Open({.latency = 64, .tail = 4800});
    EXPECT_EQ(filter->GetTail(), 4800);
    Resume();
    (*fixture)->setLatency(100);
    EXPECT_EQ(filter->GetInitialDelay(), 64);
    int announced = 0;
    filter->ConnectLatencyChanged([&] { ++announced; });
    EXPECT_EQ((*fixture)->callHost(FixtureHostCall::RestartComponent, 8, 0.0), 0);
    EXPECT_EQ(filter->GetInitialDelay(), 100);
    std::thread([&] { EXPECT_EQ((*fixture)->callHost(FixtureHostCall::RestartComponent, 8, 0.0), 1); }).join();
    EXPECT_EQ((*fixture)->callHost(FixtureHostCall::RestartComponent, 2, 0.0), 1);
    EXPECT_EQ(announced, 1);
    (*fixture)->setLatency(0xFFFFFFFF);
    filter->Suspend();
    EXPECT_EQ(filter->GetInitialDelay(), 0);
}

TEST_F(FilterProcessingTest, EditsOfThePluginReachProcessorAndListeners) {
    FixtureConfiguration configuration;
    configuration.parameterCount = 2;
    configuration.AddBypass();
    Open(configuration);
    EXPECT_EQ(filter->GetParameterCount(), 2);
    std::vector<std::pair<int, float>> heard;
    filter->ConnectAutomatedParameterChange([&](int index, float value) { heard.emplace_back(index, value); });
    Resume();
    (*fixture)->callHost(FixtureHostCall::BeginEdit, 1, 0.0);
    EXPECT_TRUE(filter->IsEditing(1));
    (*fixture)->callHost(FixtureHostCall::PerformEdit, 1, 0.25);
    (*fixture)->callHost(FixtureHostCall::EndEdit, 1, 0.0);
    EXPECT_FALSE(filter->IsEditing(1));
    (*fixture)->callHost(FixtureHostCall::PerformEdit, 2, 1.0); // the bypass isn't shown
    EXPECT_EQ((*fixture)->callHost(FixtureHostCall::BeginEdit, 77, 0.0), 0);
    EXPECT_THAT(heard, ElementsAre(std::pair(1, 0.25f)));
    SampleBlock block(2, 8);
    Render(block, block, 8);
    EXPECT_EQ(fixture->LastBlock().pointCount, 2);
}

// The render thread, an automating main thread and a plug-in that edits from within, all at once.
TEST_F(FilterProcessingTest, ThreadsMeetInTheFilterWithoutARace) {
    Open({.parameterCount = 200, .logging = false, .outputPointCount = 3, .performEditInProcess = true});
    Resume(64);
    std::atomic<bool> done{false};
    std::thread render([&] {
        SampleBlock in(2, 64), out(2, 64);
        while (!done)
            Render(in, out, 64);
    });
    for (int round = 0; round < 100'000; ++round) {
        filter->SetParameter(round % 200, static_cast<float>(round % 7) / 8.0f);
        if (round % 1000 == 0)
            vyncore::threads::RunDueCalls();
    }
    done = true;
    render.join();
    filter->Suspend();
    EXPECT_EQ(filter->GetParameter(199), static_cast<float>(99'999 % 7) / 8.0f);
}

} // namespace
