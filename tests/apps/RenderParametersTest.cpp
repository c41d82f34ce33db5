#include "apps/CommandFailure.h"
#include "apps/VynhostFixture.h"
#include "vyncore/strings/StringUtils.h"
#include "vynhost/OutputPaths.h"
#include "vynhost/ParamsCommand.h"
#include "vynhost/PresetsCommand.h"

#include <string_view>

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;

namespace {

// Parameter 0 is a gain of twice its normalized value, of 0 to 100 as display value.
class RenderParametersTest : public RenderCommandTest {
protected:
    RenderParametersTest() {
        WriteClip(mInput, MakeClip(1, 48000, [](std::size_t, std::size_t) { return 0.5F; }));
    }

    std::string WriteAutomation(std::string const& text) const {
        mFolder.AddFile("automation", text);
        return mFolder.Path() / "automation";
    }

    std::vector<float> RenderSamples(vynhost::RenderRequest const& request,
                                     FixtureConfiguration const& configuration = {}) {
        mDocument = RenderConfigured(configuration, request);
        return ReadClip(mOutput).samples;
    }

    std::string FailureOf(vynhost::RenderRequest const& request, FixtureConfiguration const& configuration) {
        return vyntest::FailureOf([&] { RenderConfigured(configuration, request); });
    }

    // A state file of the fixture's with this chunk; of an empty preset when there is none.
    std::string ListFile(std::string const& chunk) const {
        std::string const keys =
            "<utf8 key=\"ChunkData\">" + chunk + "</utf8><int key=\"Type\">1</int><float key=\"Version\">1</float>";
        return "<proplist version=\"1\"><text key=\"UniqueID\">" + vyncore::string::UTF16to8(mFixture.UniqueID()) +
               "</text><list key=\"Preset\">" + (chunk.empty() ? "" : keys) + "</list></proplist>";
    }

    json mDocument;
};

constexpr char const* kEmptyChunk = "AAAAAAAAAAAAAAAAAAAAAA==";

std::string LittleEndian(std::size_t number, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(number >> (8 * i));
    return text;
}

// A preset file of the format, with these chunks, after the header of another up to where the list's place stands.
std::string PresetFile(std::string file, std::vector<std::pair<std::string, std::string>> const& chunks) {
    std::string data, list = "List" + LittleEndian(chunks.size(), 4);
    for (auto const& [name, bytes] : chunks) {
        list += name + LittleEndian(48 + data.size(), 8) + LittleEndian(bytes.size(), 8);
        data += bytes;
    }
    return file + LittleEndian(48 + data.size(), 8) + data + list;
}

TEST_F(RenderParametersTest, RampIsTheSameForEveryBlockSizeAndFollowsItsPoints) {
    std::string const automation = WriteAutomation("0.25,parameter 0,0\n0.75,0,100\n0.75,Parameter 0,75%\n9,0,0\n");
    vynhost::RenderRequest request = MakeRequest();
    request.automationPath = automation;
    std::vector<std::vector<float>> rendered;
    for (int const blockSize : {64, 4096, 1001}) {
        request.blockSize = blockSize;
        rendered.push_back(RenderSamples(request));
        EXPECT_EQ(rendered.back(), rendered.front()) << blockSize;
    }
    EXPECT_EQ(mDocument.at("notes"), json{"1 point of the automation lies behind the end"});
    for (std::size_t const i : {0U, 11999U, 12000U, 12015U, 12016U, 24000U, 24015U, 35999U, 36000U, 47990U}) {
        double const slice = static_cast<double>(i / 16 * 16);
        double const way = (slice - 36000) / (9 * 48000 - 36000);
        double const gain = i < 12000 ? 1 : i < 36000 ? (slice - 12000) / 12000 : 1.5 - 1.5 * way;
        EXPECT_NEAR(rendered[0][i], 0.5 * gain, 1e-6) << i;
    }
}

TEST_F(RenderParametersTest, SettingsHoldFromTheFirstSampleInTheirOrder) {
    struct Case {
        std::vector<vynhost::ParameterSetting> settings;
        float sample;
    };
    for (Case const& one : {Case{{{"0", "25"}}, 0.25F}, Case{{{"PARAMETER 0", "75%"}}, 0.75F},
                            Case{{{"0", "25"}, {"Parameter 0", "0"}}, 0.0F}, Case{{}, 0.5F}}) {
        vynhost::RenderRequest request = MakeRequest();
        request.settings = one.settings;
        EXPECT_EQ(RenderSamples(request), std::vector<float>(48000, one.sample));
        EXPECT_EQ(mDocument.at("notes"), json::array());
    }
}

TEST_F(RenderParametersTest, BothRenderingsOfAPluginThatLearnsItsLatencyArePrepared) {
    static FixtureExports const* exports;
    exports = mFixture.operator->();
    vynhost::RenderRequest request = MakeRequest();
    request.settings = {{"0", "25"}};
    json const document = RenderConfigured({}, request, [](FixtureCall const* call) {
        if (call->name == std::string_view("setProcessing"))
            exports->setLatency(0);
        if (call->name == std::string_view("initialize"))
            exports->setLatency(300);
    });
    EXPECT_EQ(ReadClip(mOutput).samples, std::vector<float>(48000, 0.25F)) << document;
}

TEST_F(RenderParametersTest, PresetReachesTheRunningPluginAheadOfTheSettings) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(5);
    vynhost::RenderRequest request = MakeRequest();
    request.settings = {{"0", "25"}};
    for (char const* const preset : {"3", "list 0 program 3"}) {
        request.preset = preset;
        RenderSamples(request, configuration);
        EXPECT_EQ(mFixture.CallTexts({"setActive", "setProcessing", "setParamNormalized"}),
                  (std::vector<std::string>{
                      "Component.setActive(1)", "Controller.setParamNormalized(1)", "Component.setProcessing(1)",
                      "Controller.setParamNormalized(0)", "Component.setProcessing(0)", "Component.setActive(0)",
                      "Component.setActive(1)", "Component.setProcessing(1)", "Component.setProcessing(0)",
                      "Component.setActive(0)", "Component.setActive(1)", "Component.setActive(0)"}));
    }
}

TEST_F(RenderParametersTest, SavedStateGivesTheSameOutputAgain) {
    std::string const state = mFolder.Path() / "state";
    vynhost::RenderRequest saving = MakeRequest();
    saving.settings = {{"0", "25"}};
    saving.automationPath = WriteAutomation("0.5,0,100\n");
    saving.saveStatePath = state;
    std::vector<float> const rendered = RenderSamples(saving);
    vynhost::RenderRequest loading = MakeRequest();
    loading.automationPath = saving.automationPath;
    loading.statePath = state;
    loading.saveStatePath = state;
    EXPECT_EQ(RenderSamples(loading), rendered);
    EXPECT_EQ(RenderSamples(loading), rendered);

    std::filesystem::remove(state);
    EXPECT_THROW(RenderConfigured(FixtureConfiguration().Fail(FixtureFault::ProcessThrows), saving),
                 vynhost::CommandError);
    EXPECT_EQ(Names(), (std::set<std::string>{"automation", "in.wav", "out.wav"}));
}

TEST_F(RenderParametersTest, StateThatThePluginDoesNotGiveIsAFailureThatKeepsTheOldFile) {
    FixtureConfiguration silent;
    silent.stateHoldsGain = false;
    for (std::string const name : {"state", "state.vstpreset"}) {
        vynhost::RenderRequest request = MakeRequest();
        request.saveStatePath = mFolder.Path() / name;
        for (auto const& configuration : {silent, FixtureConfiguration().Fail(FixtureFault::ComponentGetStateFails)}) {
            mFolder.AddFile(name, "old");
            EXPECT_EQ(FailureOf(request, configuration), "1 cannot be written: the plug-in gave no state");
            EXPECT_EQ(ReadText(*request.saveStatePath), "old");
        }
    }
}

TEST_F(RenderParametersTest, StateThatHandsNothingOverIsRefused) {
    vynhost::RenderRequest request = MakeRequest();
    request.saveStatePath = mFolder.Path() / "state.vstpreset";
    RenderSamples(request);
    std::string const header = ReadText(*request.saveStatePath).substr(0, 40);
    request.statePath.swap(request.saveStatePath);

    FixtureConfiguration taking;
    taking.stateHoldsGain = false;
    FixtureConfiguration refusing = taking;
    refusing.Fail(FixtureFault::SetStateFails);
    std::string const empty = "1 is damaged, or of another version: the state in it is empty or not whole";
    struct Case {
        std::string content;
        FixtureConfiguration const& configuration;
        std::string failure;
    };
    for (Case const& one : {Case{PresetFile(header, {{"Comp", ""}}), taking, empty},
                            Case{PresetFile(header, {{"Comp", ""}, {"Cont", ""}}), taking, empty},
                            Case{ListFile(kEmptyChunk), taking, empty}, Case{ListFile(""), taking, "1 holds no state"},
                            Case{PresetFile(header, {{"Cont", "abc"}}), refusing, "1 was refused by Fixture"},
                            Case{PresetFile(header, {{"Cont", "abc"}}), taking, "none"}}) {
        mFolder.AddFile("state.vstpreset", one.content);
        EXPECT_EQ(FailureOf(request, one.configuration), one.failure);
    }
}

TEST_F(RenderParametersTest, PresetThatThePluginOnlyNamesIsRefused) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(5).special[0].flags = 1;
    vynhost::RenderRequest request = MakeRequest();
    request.preset = "3";
    EXPECT_EQ(FailureOf(request, configuration),
              "3 --preset: the plug-in names its preset 3 \"List 0 Program 3\", but gives no way to select it");
    EXPECT_FALSE(std::filesystem::exists(mOutput));
}

TEST_F(RenderParametersTest, ValuesAreReadAtTheRateAndBlockSizeOfTheRendering) {
    AudioClip clip = MakeNoise(1, 100);
    clip.sampleRate = 44100;
    WriteClip(mInput, clip);
    vynhost::RenderRequest request = MakeRequest();
    request.settings = {{"0", "25"}};
    request.blockSize = 77;
    RenderSamples(request);
    FixtureCall setup{};
    for (FixtureCall const& call : mFixture.Calls()) {
        if (call.name == std::string_view("setupProcessing"))
            setup = call;
        if (call.name == std::string_view("plainParamToNormalized"))
            break;
    }
    EXPECT_EQ(setup.value, 44100);
    EXPECT_EQ(setup.argument, 77);
}

TEST_F(RenderParametersTest, NotesTellOfStepsAndOfWhatIsNotAutomatableOnce) {
    FixtureConfiguration configuration;
    configuration.AddParameter(0, u"Mode", 4);
    vynhost::RenderRequest request = MakeRequest();
    request.settings = {{"Mode", "30"}, {"Mode", "50"}, {"1", "99%"}};
    request.automationPath = WriteAutomation("0.1,Mode,60\n0,0,33\n");
    RenderSamples(request, configuration);
    EXPECT_EQ(mDocument.at("notes"), (json{"\"Mode\" is not automatable: the plug-in may not heed its values",
                                           "\"Mode\" goes in steps, values become the nearest: 30 became 25.00"}));
}

TEST_F(RenderParametersTest, NothingIsWrittenIntoThePlugin) {
    namespace fs = std::filesystem;
    fs::path const bundle = mFolder.Path() / "bundle.vst3";
    fs::create_directories(bundle / "Contents");
    fs::create_symlink(bundle / "Contents" / "new.wav", mFolder.Path() / "link.wav");
    auto const isRefused = [&](std::string const& output, std::optional<std::string> const& state) {
        vynhost::RenderRequest request = MakeRequest();
        request.modulePath = bundle;
        request.outputPath = output;
        request.saveStatePath = state;
        return vyntest::FailureOf([&] { vynhost::CheckOutputPaths(request); }).starts_with("2 ");
    };
    for (fs::path const& inside : {bundle / "Contents" / "x.so", bundle / "new" / "er" / "x.wav", bundle,
                                   bundle / ".." / "bundle.vst3" / "x", mFolder.Path() / "link.wav"}) {
        EXPECT_TRUE(isRefused(inside, std::nullopt)) << inside;
        EXPECT_TRUE(isRefused(mOutput, inside)) << inside;
    }
    EXPECT_FALSE(isRefused(mFolder.Path() / "bundle.vst3.wav", bundle / ".." / "state"));
}

TEST_F(RenderParametersTest, WhatCannotBeDoneIsToldAndLeavesNothing) {
    std::string const module = FixturePath("configurable.vst3");
    std::string const folder = mFolder.Path();
    std::string const malformed = WriteAutomation("0,0,1\n0,Gian,1\n");
    ExpectFailures(
        Arguments(module),
        {
            {2, {"--set", "Gian=1"}, "--set: there is no parameter \"Gian\"; choose from 0 \"Parameter 0\""},
            {2, {"--set", "0=101"}, "--set: \"Parameter 0\" cannot be \"101\": it goes from 0 to 100"},
            {2, {"--set", "0=1", "1=0"}, "not expected: 1=0"},
            {2, {"--set", "0"}, "not of the form NAME=VALUE"},
            {2, {"--preset", "0"}, "--preset: there is no preset \"0\": the plug-in has none"},
            {2, {"--automate", malformed}, malformed + ": line 2: there is no parameter \"Gian\""},
            {1, {"--automate", mInput}, mInput.string() + ": line 1: "},
            {1, {"--automate", folder + "/missing"}, folder + "/missing: cannot be read"},
            {1, {"--state", folder + "/missing"}, folder + "/missing: cannot be read"},
            {1, {"--save-state", folder + "/missing/state"}, "folder does not exist"},
            {2, {"--save-state", mInput}, mInput.string() + ": is the input as well as the saved state"},
            {2, {"--save-state", folder + "/./out.wav"}, "is the output as well as the saved state"},
            {2, {"--save-state", module}, module + ": is the input as well as the saved state"},
            {2, {"--save-state", malformed, "--automate", malformed}, "is the input as well as the saved state"},
            {2, {"--state", mOutput}, mOutput.string() + ": is the input as well as the output"},
        });
    ProgramResult const good = RunVynhost(Arguments(module, {"--set", "0=1", "--set=Parameter 0=[0]", "--set=0=50%"}));
    EXPECT_NE(good.err.find("cannot be \"[0]\""), std::string::npos) << good.err;
}

TEST_F(RenderCommandTest, ParamsDocumentHoldsWhatIsKnownOfEachParameter) {
    FixtureConfiguration configuration;
    configuration.plainLow = -60;
    configuration.plainHigh = 12;
    SetFixtureText<char16_t>(configuration.AddParameter(0, u"Mode", 3).units, u"dB");
    mFixture.Configure(configuration);
    json const list = json::parse(vynhost::RunParams({.modulePath = mFixture.GetPath(), .json = true}));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0], json::parse(R"({"index": 0, "id": 0, "name": "Parameter 0", "label": "", "low": -60, "high": 12,
        "steps": 0, "value": 0.5, "display": -24, "text": "-24.00", "exposed": true, "automatable": true})"));
    EXPECT_EQ(list[1], json::parse(R"({"index": 1, "id": 1, "name": "Mode", "label": "dB", "low": -60, "high": 12,
        "steps": 3, "value": 0.5, "display": -24, "text": "-24.00", "exposed": false, "automatable": false})"));
    std::string const table = vynhost::RunParams({.modulePath = mFixture.GetPath()});
    EXPECT_EQ(table.substr(table.find('\n')), R"(
  index  ID  name             value  from  to  steps
      0   0  Parameter 0     -24.00   -60  12
      1   1  Mode         -24.00 dB   -60  12      3  internal
)");
}

TEST_F(RenderCommandTest, PresetsDocumentHoldsTheNames) {
    FixtureConfiguration configuration;
    configuration.AddPrograms(2);
    for (bool const fails : {false, true}) {
        mFixture.Configure(fails ? configuration.Fail(FixtureFault::ProgramNameFails) : configuration);
        json const list = json::parse(vynhost::RunPresets({.modulePath = mFixture.GetPath(), .json = true}));
        EXPECT_EQ(list, (json{{{"index", 0}, {"name", fails ? "" : "List 0 Program 0"}},
                              {{"index", 1}, {"name", fails ? "" : "List 0 Program 1"}}}));
    }
    mFixture.Configure({});
    EXPECT_EQ(vynhost::RunPresets({.modulePath = mFixture.GetPath(), .json = true}), "[]\n");
    EXPECT_TRUE(vynhost::RunPresets({.modulePath = mFixture.GetPath()}).ends_with("\n  no presets\n"));
    for (char const* const command : {"params", "presets", "info"}) {
        EXPECT_EQ(RunVynhost({command, FixturePath("nofactory.vst3")}).status, 3);
        EXPECT_EQ(RunVynhost({command, FixturePath("shell.vst3")}).status, 2);
    }
}

// All of zam-plugins, since each overlooks something else that comes while it is suspended.
TEST_F(VynhostTest, RealPluginsTakeValuesAndStatesFromTheFirstSample) {
    auto const modules = ListZamPlugins();
    if (modules.empty())
        GTEST_SKIP() << "the package zam-plugins is not installed";
    std::string const state = mFolder.Path() / "state";
    for (auto const& module : modules) {
        std::vector<std::string> arguments{"--save-state", state};
        for (json const& parameter : json::parse(RunVynhost({"params", module, "--json"}).out))
            arguments.push_back("--set=" + to_string(parameter.at("index")) + "=37%");
        if (arguments.size() == 2)
            continue;
        Render(module);
        AudioClip const untouched = ReadClip(mOutput);
        Render(module, arguments);
        AudioClip const rendered = ReadClip(mOutput);
        EXPECT_NE(rendered.samples, untouched.samples) << module;
        Render(module, {"--state", state});
        EXPECT_EQ(ReadClip(mOutput).samples, rendered.samples) << module;
    }
}

} // namespace
