#include "apps/MidiFiles.h"
#include "apps/VynhostFixture.h"
#include "vynhost/CommandError.h"

#include <string_view>
#include <tuple>

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;

namespace {

// A note event or a parameter's value at a sample of the timeline.
struct Heard {
    std::int64_t sample;
    int type; ///< 0 note-on, 1 note-off; -1 for a value
    int number;
    float amount;

    bool operator==(Heard const&) const = default;
};

std::ostream& operator<<(std::ostream& stream, Heard const& heard) {
    return stream << heard.sample << ": " << heard.type << ' ' << heard.number << ' ' << heard.amount;
}

// The fixture as an instrument, and what it was sent.
class RenderMidiTest : public RenderCommandTest {
protected:
    static FixtureConfiguration MakeInstrument() {
        FixtureConfiguration configuration;
        configuration.SetBuses({}, {FixtureBus::Make(3, u"Output")});
        SetFixtureText<char>(configuration.subCategories, "Instrument|Synth");
        configuration.eventInputCount = 1;
        return configuration;
    }

    // A quarter note is a tenth of a second, of 441 ticks: ten samples a tick at 44,100 hertz.
    vynhost::RenderRequest MakeMidiRequest(std::initializer_list<int> events, int endDelta = 0) const {
        std::string const tempo = MidiText({0, 0xFF, 0x51, 3, 0x01, 0x86, 0xA0});
        std::string const track = MidiText(events) + MidiText({endDelta, 0xFF, 0x2F, 0});
        vynhost::RenderRequest request = MakeRequest();
        request.inputPath.reset();
        request.midiPath =
            WriteMidi(mFolder.Path() / "song.mid", MidiHeader(0, 1, 441) + MidiChunk("MTrk", tempo + track));
        return request;
    }

    json RenderSong(FixtureConfiguration const& configuration, vynhost::RenderRequest const& request) {
        sExports = mFixture.operator->();
        sHeard.clear();
        sBlocks.clear();
        return RenderConfigured(configuration, request, Listen);
    }

    static void Listen(FixtureCall const* call) {
        if (call->name != std::string_view("process"))
            return;
        FixtureBlock const& block = sExports->snapshot()->block;
        sBlocks.push_back(block.numSamples);
        for (int i = 0; i < block.pointCount; ++i)
            sHeard.push_back({block.projectTimeSamples + block.points[i].offset, -1,
                              static_cast<int>(block.points[i].id), static_cast<float>(block.points[i].value)});
        for (int i = 0; i < block.eventCount; ++i)
            sHeard.push_back({block.projectTimeSamples + block.events[i].offset, block.events[i].type,
                              block.events[i].pitch, block.events[i].amount});
    }

    static inline FixtureExports const* sExports = nullptr;
    static inline std::vector<Heard> sHeard;
    static inline std::vector<int> sBlocks;
};

TEST_F(RenderMidiTest, NotesReachTheInstrumentAtTheirSamplesWhateverTheBlockSize) {
    vynhost::RenderRequest request = MakeMidiRequest({0, 0x90, 60, 127, 51, 62, 127, 5, 60, 0, 100, 0x80, 62, 127}, 44);
    for (int const blockSize : {1, 64, 512, 4096}) {
        request.blockSize = blockSize;
        json const document = RenderSong(MakeInstrument(), request);
        EXPECT_EQ(sHeard,
                  (std::vector<Heard>{{0, 0, 60, 1}, {510, 0, 62, 1}, {560, 1, 60, 64 / 127.0F}, {1560, 1, 62, 1}}))
            << blockSize;
        EXPECT_EQ(document.at("samples"), 2000);
    }
}

TEST_F(RenderMidiTest, InstrumentNeedsNoInputAndIsAsWideAsItsOutput) {
    vynhost::RenderRequest request = MakeMidiRequest({0, 0x90, 60, 127}, 100);
    for (auto const& [arrangement, channels] : {std::pair(0x80000U, 1), std::pair(3U, 2), std::pair(0x3FU, 6)}) {
        FixtureConfiguration configuration = MakeInstrument();
        configuration.outputs[0].arrangement = arrangement;
        json const document = RenderSong(configuration, request);
        EXPECT_EQ(document.at("channelsIn"), 0);
        EXPECT_TRUE(document.at("peakIn").is_null() && document.at("rmsIn").is_null());
        EXPECT_EQ(document.at("channelsOut"), channels);
        EXPECT_EQ(document.at("notes"), json::array());
        AudioClip const clip = ReadClip(mOutput);
        EXPECT_EQ(std::tuple(clip.channels, clip.sampleRate, clip.format & SF_FORMAT_SUBMASK, clip.FrameCount()),
                  std::tuple(channels, 44100, SF_FORMAT_FLOAT, 1000U));
    }
    request.sampleRate = 88200;
    request.json = false;
    mFixture.Configure(MakeInstrument());
    std::string const table = vynhost::RunRender(request);
    EXPECT_NE(table.find("0 in, 2 out"), std::string::npos) << table;
    EXPECT_EQ(table.find("peak in"), std::string::npos) << table;
    EXPECT_EQ(ReadClip(mOutput).FrameCount(), 2000U);
}

TEST_F(RenderMidiTest, NotesThatAreStillOnEndWithTheSongAndTheTailFollows) {
    vynhost::RenderRequest request = MakeMidiRequest({0, 0x90, 60, 127}, 100);
    FixtureConfiguration configuration = MakeInstrument();
    std::vector<Heard> const released{{0, 0, 60, 1}, {1000, 1, 60, 64 / 127.0F}};
    configuration.tail = 77;
    json const document = RenderSong(configuration, request);
    EXPECT_EQ(document.at("samples"), 1077);
    EXPECT_EQ(document.at("tail"), 77);
    EXPECT_EQ(sHeard, released);
    request.tailSeconds = 0.01;
    EXPECT_EQ(RenderSong(configuration, request).at("samples"), 1441);
    EXPECT_EQ(sHeard, released);
    configuration.latency = 300;
    request.tailSeconds = 0;
    EXPECT_EQ(RenderSong(configuration, request).at("samples"), 1000);
    EXPECT_EQ(sHeard, released);
}

TEST_F(RenderMidiTest, InputAndSongRunSideBySideForAsLongAsTheLonger) {
    FixtureConfiguration configuration = MakeInstrument();
    configuration.SetBuses({FixtureBus::Make(3, u"Input")}, {FixtureBus::Make(3, u"Output")});
    configuration.latency = 30;
    configuration.delayAudio = true;
    vynhost::RenderRequest request = MakeMidiRequest({100, 0x90, 60, 127, 0, 60, 0}, 50);
    for (std::size_t const frames : {400U, 5000U}) {
        AudioClip clip = MakeNoise(2, frames);
        clip.sampleRate = 44100;
        WriteClip(mInput, clip);
        request.inputPath = mInput;
        json const document = RenderSong(configuration, request);
        EXPECT_EQ(sHeard, (std::vector<Heard>{{1000, 0, 60, 1}, {1000, 1, 60, 64 / 127.0F}}));
        clip.samples.resize(std::max<std::size_t>(clip.samples.size(), 3000));
        EXPECT_EQ(ReadClip(mOutput).samples, clip.samples) << frames;
        EXPECT_GT(document.at("peakIn"), 0.0);
    }
}

TEST_F(RenderMidiTest, ControllersThatAreParametersHoldFromTheirSampleOn) {
    FixtureConfiguration configuration = MakeInstrument();
    configuration.SetBuses({FixtureBus::Make(3, u"Input")}, {FixtureBus::Make(3, u"Output")});
    configuration.midiMapping = true;
    configuration.midiAssignments[0] = {7, 0};
    AudioClip clip = MakeClip(2, 2000, [](std::size_t, std::size_t) { return 0.25F; });
    clip.sampleRate = 44100;
    WriteClip(mInput, clip);
    vynhost::RenderRequest request = MakeMidiRequest({33, 0xB0, 7, 0, 0, 0x90, 60, 127, 10, 0xB0, 7, 127});
    request.inputPath = mInput;
    RenderSong(configuration, request);
    EXPECT_EQ(sHeard.at(0), (Heard{330, -1, 0, 0}));
    EXPECT_EQ(sHeard.at(1), (Heard{330, 0, 60, 1}));
    AudioClip const out = ReadClip(mOutput);
    for (std::size_t const frame : {0U, 329U, 330U, 429U, 430U, 1999U})
        EXPECT_EQ(out.At(frame, 0), frame < 330 ? 0.25F : frame < 430 ? 0.0F : 0.5F) << frame;
}

TEST_F(RenderMidiTest, TransportFollowsTheSong) {
    // A quarter note of 100 milliseconds, of 200 from the 200th tick on.
    vynhost::RenderRequest request = MakeMidiRequest(
        {0, 0xFF, 0x58, 4, 3, 2, 24, 8, 0x81, 0x48, 0xFF, 0x51, 3, 0x03, 0x0D, 0x40, 0x81, 0x48, 0x90, 60, 1});
    request.blockSize = 1024;
    EXPECT_EQ(RenderSong(MakeInstrument(), request).at("samples"), 6000);
    EXPECT_EQ(sBlocks, (std::vector{1024, 976, 1024, 1024, 1024, 928}));
    FixtureBlock const& block = mFixture.LastBlock();
    EXPECT_EQ(block.tempo, 300.0);
    EXPECT_EQ(block.timeSigNumerator, 3);
    EXPECT_NEAR(block.projectTimeMusic, (2000 + (5072 - 2000) / 2.0) / 4410, 1e-9);
}

TEST_F(RenderMidiTest, AutomationAndSongShareTheBlocks) {
    vynhost::RenderRequest request = MakeMidiRequest({10, 0xB0, 1, 1, 20, 0xB0, 1, 2, 0, 0x90, 60, 127}, 100);
    request.automationPath = mFolder.Path() / "automation";
    std::ofstream(*request.automationPath) << "0,0,0\n0.004535147,0,50\n0.004535147,0,100\n";
    RenderSong(MakeInstrument(), request);
    // Up to the controller, along the ramp, with a step at the other controller.
    EXPECT_EQ(sBlocks.front(), 16);
    std::int64_t position = 0;
    std::set<std::int64_t> starts;
    for (int const block : sBlocks) {
        starts.insert(position);
        position += block;
    }
    for (std::int64_t const start : {16, 96, 100, 112, 192, 200, 300})
        EXPECT_TRUE(starts.contains(start)) << start;
    EXPECT_EQ(position, 1300);
    EXPECT_EQ(std::ranges::count(sHeard, Heard{300, 0, 60, 1}), 1);
}

TEST_F(RenderMidiTest, SongWithoutMessagesIsNotedAndOneThatCannotBeRenderedAFailure) {
    FixtureConfiguration configuration = MakeInstrument();
    EXPECT_THROW(RenderConfigured(configuration, MakeMidiRequest({})), vynhost::CommandError);
    configuration.nullDsp = true;
    EXPECT_THROW(RenderConfigured(configuration, MakeMidiRequest({0, 0x90, 60, 127}, 100)), vynhost::CommandError);
    EXPECT_FALSE(std::filesystem::exists(mOutput));
    EXPECT_EQ(RenderSong(MakeInstrument(), MakeMidiRequest({}, 10)).at("notes"),
              json{"the MIDI file holds no messages"});
}

TEST_F(RenderMidiTest, WhatCannotBeDoneIsTold) {
    std::string const module = FixturePath("configurable.vst3");
    std::string const song = *MakeMidiRequest({0, 0x90, 60, 127}, 100).midiPath;
    std::string const broken = WriteMidi(mFolder.Path() / "broken.mid", "MThd");
    ExpectFailures({"render", module},
                   {
                       {2, {"-o", mOutput}, "--input is required"},
                       {2, {"-o", mOutput, "--rate", "48000"}, "--input is required"},
                       {2, {"-o", mOutput, "-i", mInput, "--rate", "48000"}, "--input excludes --rate"},
                       {2, {"-o", mOutput, "--midi", song, "--rate", "10"}, "--rate"},
                       {2, {"-o", mOutput, "--midi", song, "--tail", "nan"}, "--tail: goes from 0 to 3600 seconds"},
                       {2, {"-o", mOutput, "--midi", song, "--tail", "-1"}, "--tail: goes from 0 to 3600 seconds"},
                       {2, {"-o", song, "--midi", song}, song + ": is the input as well as the output"},
                       {3, {"-o", mOutput, "--midi", song}, module + ": is no instrument: it plays no MIDI file"},
                       {3, {"-o", mOutput, "-i", mInput, "--midi", song}, module + ": is no instrument"},
                       {1, {"-o", mOutput, "--midi", broken}, broken + ": byte 4: something is missing at the end"},
                       {1, {"-o", mOutput, "--midi", broken + "x"}, broken + "x: cannot be read"},
                   });
    EXPECT_EQ(RunVynhost(Arguments(module, {"--tail", "0.5", "--json"})).status, 0);
    EXPECT_EQ(ReadClip(mOutput).FrameCount(), 72000U);
}

} // namespace
