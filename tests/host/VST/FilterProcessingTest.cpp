#include "FilterFixture.h"

#include "support/NoAllocationScope.h"

#include <climits>

namespace {

using namespace vyntest;

class VSTFilterProcessingTest : public VSTFilterTest {
protected:
    static VSTFixtureConfiguration MusicDevice() {
        VSTFixtureConfiguration configuration;
        configuration.flags |= effFlagsIsSynth;
        return configuration;
    }

    /// Shows a stereo effect as a mono one.
    void OpenMono(VSTFixtureConfiguration configuration = {}) {
        configuration.flags |= effFlagsCanMono;
        Open(configuration);
        filter->RequestBusConfiguration(Buses({1}), Buses({1}));
        ASSERT_EQ(filter->GetNumberOfInputChannels(), 1);
    }

    VSTFixtureBlock const& Block() const { return fixture->Snapshot().block; }

    /// The filter's own call, without what ProcessWithMapping does before it.
    void Process(SampleBlock& from, SampleBlock& to, int samples) {
        ChannelFlags outFlags(~std::uint64_t{0});
        filter->Process(from.Get(), to.Get(), samples, ChannelFlags(), outFlags);
        EXPECT_EQ(outFlags, ChannelFlags());
    }

    /// First data byte of each event of the last delivery.
    std::vector<int> Delivered() const {
        VSTFixtureEvents const& events = fixture->Snapshot().events;
        std::vector<int> notes;
        for (int i = 0; i < events.count; ++i)
            notes.push_back(events.events[i].midiData[1]);
        return notes;
    }

    SampleBlock in{2, 64}, out{2, 64};
};

TEST_F(VSTFilterProcessingTest, EffectGetsTheCallersChannelsAndTheWholeBlock) {
    Open({});
    Resume(4096);
    filter->SetParameter(0, 0.25f);
    SampleBlock longIn(2, 3000), longOut(2, 3000);
    Process(longIn, longOut, 3000);
    EXPECT_EQ(Block().frames, 3000) << "no block is cut";
    EXPECT_FALSE(Block().accumulates);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        EXPECT_EQ(Block().inputs[channel], longIn.Get()[channel]);
        EXPECT_EQ(Block().outputs[channel], longOut.Get()[channel]);
        EXPECT_EQ(longOut[channel][2999], 0.5f * longIn[channel][2999]);
    }
    EXPECT_NE(Block().firstOutputs[0], 0.0f) << "nobody clears what is written anyway";
    filter->Suspend();
    EXPECT_EQ(filter->GetTail(), 0);
    EXPECT_EQ(Render(in, out, 64, 0b11), ChannelFlags());
    EXPECT_THAT(out[0], Each(0.0f));
    EXPECT_THAT(out[1], Each(0.0f));
}

TEST_F(VSTFilterProcessingTest, EffectThatCannotReplaceAddsToWhatIsThere) {
    VSTFixtureConfiguration configuration;
    configuration.flags = 0;
    Open(configuration);
    Resume(64);
    Process(in, out, 64);
    EXPECT_TRUE(Block().accumulates);
    EXPECT_EQ(out[1][63], 2.0f * in[1][63]);
    Process(in, out, 64);
    EXPECT_EQ(out[1][63], 3.0f * in[1][63]);
}

TEST_F(VSTFilterProcessingTest, MonoIsHeardOnBothSidesAndTheRightOneIsDropped) {
    OpenMono();
    Resume(64);
    SampleBlock monoIn(1, 64), monoOut(1, 64);
    Render(monoIn, monoOut, 64);
    EXPECT_EQ(Block().inputs[0], Block().inputs[1]);
    EXPECT_NE(Block().outputs[0], Block().outputs[1]);
    EXPECT_EQ(Block().nullChannels, 0);
    EXPECT_EQ(monoOut[0], monoIn[0]);
    filter->Suspend();
    Resume(4096);
    SampleBlock longIn(1, 4096), longOut(1, 4096);
    Render(longIn, longOut, 4096);
    EXPECT_EQ(longOut[0], longIn[0]) << "the spare channel grows with the block";
}

TEST_F(VSTFilterProcessingTest, EffectIsNeverHandedFewerChannelsThanItSaysItHas) {
    struct Case {
        int inputs, outputs;
        std::int32_t during;
    };
    for (Case const& row :
         {Case{8, 2, effMainsChanged}, Case{2, 8, effMainsChanged}, Case{8, 8, effStartProcess},
          Case{8, 8, effProcessEvents}, Case{2, INT_MAX, effProcessEvents}, Case{1, 1, effMainsChanged},
          Case{9, 9, effGetEffectName}, Case{200, 200, effOpen}, Case{-1, 2, effMainsChanged},
          Case{2, INT_MAX, effMainsChanged}, Case{INT_MAX, 2, effOpen}, Case{INT_MAX, INT_MAX, effStartProcess}})
        for (bool const mono : {false, true}) {
            VSTFixtureConfiguration configuration;
            configuration.change = {.during = row.during, .numInputs = row.inputs, .numOutputs = row.outputs};
            configuration.flags |= effFlagsCanMono | effFlagsIsSynth;
            Open(configuration);
            if (mono)
                filter->RequestBusConfiguration(Buses({1}), Buses({1}));
            Resume(64);
            SampleBlock ins(filter->GetNumberOfInputChannels(), 64), outs(filter->GetNumberOfOutputChannels(), 64);
            filter->ScheduleMIDIEvent(false, 0, 0x90, 1, 1);
            Render(ins, outs, 64);
            EXPECT_EQ(Block().nullChannels, 0) << row.inputs << ' ' << row.outputs;
            filter->Suspend();
            Resume(64);
            Render(ins, outs, 64);
            EXPECT_EQ(Block().nullChannels, 0) << row.inputs << ' ' << row.outputs;
        }
}

TEST_F(VSTFilterProcessingTest, BlockForWhichThereAreTooFewChannelsIsSilentUntilTheNextResume) {
    Open(MusicDevice());
    Resume(64);
    fixture->Effect()->numOutputs = 5;
    filter->ScheduleMIDIEvent(false, 0, 0x90, 1, 1);
    Render(in, out, 64);
    EXPECT_EQ(fixture->CountCalls(kVSTFixtureProcessReplacing), 0);
    EXPECT_THAT(out[1], Each(0.0f));
    filter->Suspend();
    Resume(64);
    Render(in, out, 64);
    EXPECT_THAT(fixture->Names(), ElementsAre("processReplacing")) << "the event was the lost block's";
    EXPECT_EQ(Block().nullChannels, 0);
    EXPECT_EQ(out[1], in[1]);
}

TEST_F(VSTFilterProcessingTest, MusicDeviceGetsWhatWasScheduledSinceTheLastBlockUpTo256Events) {
    Open(MusicDevice());
    Resume(64);
    Render(in, out, 64);
    EXPECT_EQ(fixture->CountCalls(effProcessEvents), 0) << "nothing to deliver";
    filter->ScheduleMIDIEvent(true, 5, 0x90, 60, 100);
    filter->ScheduleMIDIEvent(false, 63, 0x80, 61, 1);
    fixture->ClearCalls();
    Render(in, out, 64);
    EXPECT_THAT(fixture->Names(), ElementsAre("effProcessEvents", "processReplacing"));
    VSTFixtureEvents const& events = fixture->Snapshot().events;
    ASSERT_EQ(events.count, 2);
    EXPECT_EQ(events.reserved, 0);
    VstMidiEvent const& first = events.events[0];
    EXPECT_EQ(first.type, 1);
    EXPECT_EQ(first.byteSize, 32);
    EXPECT_EQ(first.deltaFrames, 5);
    EXPECT_EQ(first.flags, 1);
    EXPECT_THAT(first.midiData, ElementsAre(0x90, 60, 100, 0));
    EXPECT_EQ(first.noteLength + first.noteOffset + first.detune + first.noteOffVelocity, 0);
    EXPECT_EQ(events.events[1].flags, 0);
    EXPECT_EQ(events.events[1].deltaFrames, 63);
    filter->ScheduleMIDIEvent(false, 0, 0x80, 62, 0);
    Render(in, out, 64);
    EXPECT_THAT(Delivered(), ElementsAre(62));
    filter->Suspend();
    for (unsigned event = 0; event < 258; ++event)
        filter->ScheduleMIDIEvent(false, event, 0x90, static_cast<unsigned char>(event % 128), 1);
    Render(in, out, 64);
    ASSERT_EQ(fixture->Snapshot().events.count, 256);
    EXPECT_EQ(fixture->Snapshot().events.events[255].deltaFrames, 255);
    filter->ScheduleMIDIEvent(false, 0, 0x90, 7, 1);
    Render(in, out, 64);
    EXPECT_THAT(Delivered(), ElementsAre(7));
    filter->Suspend();
    // Another effect is spoken to without events.
    Open({});
    Resume(64);
    filter->ScheduleMIDIEvent(false, 0, 0x90, 7, 1);
    Render(in, out, 64);
    EXPECT_THAT(fixture->Names(), ElementsAre("processReplacing"));
}

TEST_F(VSTFilterProcessingTest, WhatTheAudioCallThrowsStaysInAndItsEventsComeAgain) {
    for (std::int32_t const flags : {effFlagsIsSynth | effFlagsCanReplacing, effFlagsIsSynth + 0}) {
        VSTFixtureConfiguration configuration;
        configuration.flags = flags;
        Open(configuration.ThrowIn(flags == effFlagsIsSynth ? kVSTFixtureProcess : kVSTFixtureProcessReplacing));
        Resume(64);
        filter->ScheduleMIDIEvent(false, 0, 0x90, 1, 1);
        EXPECT_NO_THROW(Process(in, out, 64));
        filter->ScheduleMIDIEvent(false, 0, 0x90, 2, 1);
        EXPECT_NO_THROW(Process(in, out, 64));
        EXPECT_THAT(Delivered(), ElementsAre(1, 2));
    }
    Open(MusicDevice().ThrowIn(effProcessEvents));
    Resume(64);
    filter->ScheduleMIDIEvent(false, 0, 0x90, 1, 1);
    EXPECT_NO_THROW(Process(in, out, 64));
    EXPECT_EQ(fixture->CountCalls(kVSTFixtureProcessReplacing), 1);
}

TEST_F(VSTFilterProcessingTest, EffectWithoutAudioFunctionsIsNotCalled) {
    for (std::int32_t const flags : {effFlagsCanReplacing + 0, 0}) {
        VSTFixtureConfiguration configuration;
        configuration.flags = flags;
        Open(configuration);
        fixture->Effect()->process = nullptr;
        fixture->Effect()->processReplacing = nullptr;
        Resume(64);
        EXPECT_NO_THROW(Process(in, out, 64));
    }
}

TEST_F(VSTFilterProcessingTest, BlockNeitherAllocatesNorLocksWhateverTheEffectAsksInIt) {
    VSTFixtureConfiguration configuration = MusicDevice();
    for (std::int32_t const opcode :
         {audioMasterGetTime + 0, audioMasterVersion + 0, audioMasterPinConnected + 0, 16, 17, 23})
        configuration.AddHostCall({.during = kVSTFixtureProcessReplacing, .opcode = opcode});
    configuration.AddHostCall(
        {.during = kVSTFixtureProcessReplacing, .opcode = audioMasterCanDo, .text = "sendVstTimeInfo"});
    configuration.AddHostCall({.during = effProcessEvents, .opcode = audioMasterGetTime});
    for (bool const mono : {false, true}) {
        if (mono)
            OpenMono(configuration);
        else
            Open(configuration);
        Resume(64);
        Render(in, out, 64);
        fixture->ClearCalls();
        {
            NoAllocationScope const guard;
            for (int block = 0; block < 4; ++block) {
                for (int event = 0; event < 300; ++event)
                    filter->ScheduleMIDIEvent(false, 0, 0x90, 1, 1);
                ChannelFlags outFlags;
                filter->ProcessWithMapping(in.Get(), out.Get(), 64, ChannelFlags(1), outFlags);
            }
        }
        EXPECT_EQ(fixture->CountCalls(kVSTFixtureProcessReplacing), 4);
        EXPECT_THAT(fixture->Answers(audioMasterGetTime), Each(testing::Ne(0)));
    }
}

} // namespace
