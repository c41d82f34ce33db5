#include "apps/CommandFailure.h"
#include "apps/VynhostFixture.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <string_view>
#include <sys/stat.h>

using namespace vyntest;
using namespace vynfixtures;
namespace fs = std::filesystem;
using nlohmann::json;

namespace {

TEST_F(VynhostTest, BadInputIsToldInOneLineThatNamesTheFile) {
    std::string const good = FixturePath("configurable.vst3");
    std::string const folder = mFolder.Path();
    std::ofstream(mFolder.Path() / "text.wav") << "no audio at all";
    std::ofstream(mFolder.Path() / "nothing.wav");
    WriteClip(mFolder.Path() / "empty.wav", MakeNoise(1, 0));
    WriteClip(mFolder.Path() / "cut.wav", MakeNoise(1, 5000));
    fs::resize_file(mFolder.Path() / "cut.wav", 10000);
    fs::create_directory(mFolder.Path() / "folder.wav");
    fs::create_directory(mFolder.Path() / "nobundle.vst3");
    std::string const side = folder + "/side.wav";
    AudioClip otherRate = MakeNoise(1, 100);
    otherRate.sampleRate = 44100;
    WriteClip(side, otherRate);
    ::mkfifo((mFolder.Path() / "pipe.wav").c_str(), 0600);

    struct Case {
        int status;
        char const* key; ///< of the named argument; "last" is the one behind all
        std::string module, in, out;
        std::vector<std::string> more;
        std::string saying;
    };
    std::vector<Case> const cases{
        {3, "plugin", folder + "/missing.vst3", mInput, mOutput, {}, ""},
        {3, "plugin", folder + "/nobundle.vst3", mInput, mOutput, {}, ""},
        {3, "plugin", FixturePath("notaplugin.vst3"), mInput, mOutput, {}, ""},
        {3, "plugin", FixturePath("othermachine.vst3"), mInput, mOutput, {}, ""},
        {3, "plugin", FixturePath("nofactory.vst3"), mInput, mOutput, {}, ""},
        {3, "plugin", FixturePath("moduleentryfails.vst3"), mInput, mOutput, {}, ""},
        {3, "plugin", good, mInput, mOutput, {"--class", "3:0000"}, "3:"},
        {2, "plugin", FixturePath("shell.vst3"), mInput, mOutput, {}, "--class: 3:"},
        {1, "file", good, folder + "/missing.wav", mOutput, {}, "no such file"},
        {1, "file", good, folder + "/text.wav", mOutput, {}, "no audio file"},
        {1, "file", good, folder + "/nothing.wav", mOutput, {}, "empty"},
        {1, "file", good, folder + "/empty.wav", mOutput, {}, "no audio"},
        {1, "file", good, folder + "/cut.wav", mOutput, {}, "truncated"},
        {1, "file", good, folder + "/folder.wav", mOutput, {}, "folder"},
        {1, "file", good, folder + "/pipe.wav", mOutput, {}, "ordinary"},
        {1, "out", good, mInput, folder + "/missing/out.wav", {}, "folder does not exist"},
        {1, "out", good, mInput, folder + "/folder.wav", {}, "folder"},
        {1, "out", good, mInput, folder + "/pipe.wav", {}, "ordinary"},
        {2, "out", good, mInput, folder + "/folder.wav/../in.wav", {}, "input as well as the output"},
        {2, "out", good, mInput, side, {"--sidechain", side}, "input as well as the output"},
        {1, "last", good, mInput, mOutput, {"--sidechain", folder + "/missing.wav"}, "no such file"},
        {1, "last", good, mInput, mOutput, {"--sidechain", side}, "sample rate is 44100 Hz"},
        {3, "plugin", good, mInput, mOutput, {"--sidechain", mInput}, "has no side-chain input"},
    };
    std::set<std::string> const before = Names();
    for (Case const& one : cases) {
        bool const byPlugin = one.key == std::string("plugin");
        std::map<std::string, std::string> const names{{"plugin", one.module},
                                                       {"out", one.out},
                                                       {"file", one.in},
                                                       {"last", one.more.empty() ? "" : one.more.back()}};
        std::string const name = names.at(one.key);
        std::vector<std::string> arguments{"render", one.module, "-i", one.in, "-o", one.out};
        arguments.insert(arguments.end(), one.more.begin(), one.more.end());
        ProgramResult const plain = RunVynhost(arguments);
        EXPECT_EQ(plain.status, one.status) << name << plain.err;
        EXPECT_EQ(plain.out, "");
        EXPECT_EQ(std::ranges::count(plain.err, '\n'), 1) << plain.err;
        EXPECT_NE(plain.err.find(name + ": "), std::string::npos) << plain.err;
        EXPECT_NE(plain.err.find(one.saying), std::string::npos) << plain.err;

        arguments.push_back("--json");
        ProgramResult const machine = RunVynhost(arguments);
        EXPECT_EQ(machine.status, one.status);
        EXPECT_EQ(machine.err, "");
        json const document = json::parse(machine.out, nullptr, false);
        EXPECT_TRUE(document.contains("error")) << machine.out;
        EXPECT_EQ(document.value(byPlugin ? "plugin" : "file", ""), name);
        EXPECT_EQ(Names(), before) << name;
    }
}

TEST_F(VynhostTest, ControlCharactersOfNamesDoNotReachTheTerminal) {
    std::string const module = FixturePath("configurable.vst3");
    std::string const name = mFolder.Path() / "a\nb\x1B[2J\xC2\x9B\xE2\x80\xA8 \xC3\x9B.wav";
    std::string const shown = mFolder.Path() / "a b [2J      \xC3\x9B.wav";
    ProgramResult const missing = RunVynhost({"render", module, "-i", name, "-o", mOutput});
    EXPECT_EQ(missing.err, "vynhost: " + shown + ": cannot be read: there is no such file\n");
    ProgramResult const written = RunVynhost({"render", module, "-i", mInput, "-o", name});
    EXPECT_NE(written.out.find("  written         " + shown + "\n"), std::string::npos) << written.out;
}

TEST_F(VynhostTest, WrongUsageIsStatusTwo) {
    std::string const module = FixturePath("configurable.vst3");
    std::vector<std::vector<std::string>> wrong{
        {},
        {"bake"},
        {"render", module, "-i", mInput},
        Arguments(module, {"--block-size", "0"}),
        Arguments(module, {"--block-size", "65537"}),
        Arguments(module, {"--block-size", "many"}),
        Arguments(module, {"--loud"}),
        Arguments(module, {"--layout", "quadro"}),
        Arguments(module, {"--map", "in:0,1,-"}),
        Arguments(module, {"--map", "out:2"}),
        {"info"},
    };
    for (char const* const choice :
         {"", "0,1", "in:", "in:x", "in:-1", "in:0,,1", "in:0/in:1", "in:0/", "out:1,0,1", "in:99999999999"})
        wrong.push_back(Arguments(module, {"--map", choice}));
    for (auto const& arguments : wrong) {
        ProgramResult const result = RunVynhost(arguments);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
    EXPECT_TRUE(json::parse(RunVynhost({"render", "--json"}).out, nullptr, false).contains("error"));
    EXPECT_EQ(RunVynhost({"--version"}).out.rfind("vynhost ", 0), 0U);
    EXPECT_NE(RunVynhost({"render", "--help"}).out.find("--block-size"), std::string::npos);
    EXPECT_FALSE(fs::exists(mOutput));
}

TEST_F(VynhostTest, OutputThatCannotBeWrittenLeavesNothing) {
    std::string const module = FixturePath("configurable.vst3");
    ProgramResult const full = RunVynhost(Arguments(module), "ulimit -f 64;");
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.err.find(mOutput.string() + ": could not be written"), std::string::npos) << full.err;
    EXPECT_EQ(Names(), std::set<std::string>{"in.wav"});
    for (char const* const closing : {"exec >&-;", "exec >/dev/full;"})
        EXPECT_EQ(RunVynhost(Arguments(module, {"--json"}), closing).status, 1) << closing;
    EXPECT_EQ(ReadClip(mOutput).samples, ReadClip(mInput).samples);
}

TEST_F(VynhostTest, DocumentHasItsKeysAndTrueFigures) {
    AudioClip const clip = MakeClip(1, 4800, [](std::size_t i, std::size_t) { return i % 2 ? 0.5F : -0.5F; });
    WriteClip(mInput, clip);
    json const document = Render(FixturePath("configurable.vst3"), {"--block-size", "100"});
    EXPECT_EQ(document.at("id").get<std::string>().rfind("3:", 0), 0U);
    EXPECT_EQ(document.at("samples"), 4800);
    EXPECT_EQ(document.at("seconds"), 0.1);
    for (char const* const key : {"channelsIn", "channelsOut"})
        EXPECT_EQ(document.at(key), 1);
    for (char const* const key : {"peakIn", "rmsIn", "peakOut", "rmsOut"})
        EXPECT_DOUBLE_EQ(document.at(key).get<double>(), 0.5) << key;
    EXPECT_EQ(document.at("latency"), 0);
    EXPECT_EQ(document.at("tail"), 0);
    EXPECT_GT(document.at("timesRealTime").get<double>(), 1.0);
    EXPECT_EQ(document.at("notes"), json::array());
    EXPECT_EQ(ReadClip(mOutput).samples, clip.samples);
}

TEST_F(VynhostTest, ClassIsChosenByItsIDWithOrWithoutTechnology) {
    ProgramResult const several = RunVynhost(Arguments(FixturePath("shell.vst3")));
    std::string const list = several.err.substr(several.err.find("--class: ") + 9);
    std::string const second = list.substr(list.find(", ") + 2, list.size() - list.find(", ") - 3);
    EXPECT_EQ(Render(FixturePath("shell.vst3"), {"--class", second}).at("id"), second);
    EXPECT_EQ(Render(FixturePath("shell.vst3"), {"--class", second.substr(2)}).at("id"), second);
}

TEST_F(RenderCommandTest, PluginIsToldOfflineRenderingTransportAndSilentSideChains) {
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(3), FixtureBus::Make(3, u"Side", 1)}, {FixtureBus::Make(3)});
    RenderConfigured(configuration);
    auto const& block = mFixture.LastBlock();
    EXPECT_EQ(mFixture.CallTexts({"setActive"}).front(), "Component.setActive(1)");
    EXPECT_EQ(block.sampleRate, 48000.0);
    EXPECT_EQ(block.tempo, 120.0);
    EXPECT_EQ(block.projectTimeSamples, 48000 / 512 * 512);
    EXPECT_DOUBLE_EQ(block.projectTimeMusic, 47616.0 / 24000.0);
    EXPECT_NE(block.state & 2U, 0U);
    EXPECT_EQ(block.inputs.silence[0], 0U);
    EXPECT_EQ(block.inputs.silence[1], 3U);
    EXPECT_EQ(block.numSamples, 48000 % 512);
}

TEST_F(RenderCommandTest, PluginThatCannotBeMadeOrDoesNotProcessLeavesNoFile) {
    auto const statusOf = [this](FixtureConfiguration const& configuration) {
        return FailureOf([&] { RenderConfigured(configuration); })[0];
    };
    for (FixtureFault const fault : {FixtureFault::NullFactory, FixtureFault::ComponentCreationFails,
                                     FixtureFault::ComponentInitializeFails, FixtureFault::NoAudioProcessor})
        EXPECT_EQ(statusOf(FixtureConfiguration().Fail(fault)), '3');
    FixtureConfiguration throwsOnce = FixtureConfiguration().Fail(FixtureFault::ProcessThrowsInt);
    throwsOnce.processFaultAt = 3;
    EXPECT_EQ(statusOf(throwsOnce), '1');
    EXPECT_EQ(Names(), std::set<std::string>{"in.wav"});
    EXPECT_EQ(mFixture->liveObjects(), 0);
}

TEST_F(VynhostTest, RealPluginsRenderWithoutNaNAndTheSameAgain) {
    auto const modules = ListZamPlugins();
    if (modules.empty())
        GTEST_SKIP() << "the package zam-plugins is not installed";
    for (fs::path const& module : modules) {
        json const first = Render(module);
        AudioClip const clip = ReadClip(mOutput);
        EXPECT_TRUE(std::ranges::all_of(clip.samples, [](float s) { return std::isfinite(s); })) << module;
        for (auto const& note : first.at("notes"))
            EXPECT_EQ(note.get<std::string>().find("finite"), std::string::npos) << module;
        EXPECT_EQ(clip.FrameCount(), 48000U);
        Render(module);
        EXPECT_EQ(ReadClip(mOutput).samples, clip.samples) << module;
    }
}

TEST_F(VynhostTest, NeitherBlockSizeNorRelativePathsShowInTheResult) {
    std::string const module = FixturePath("configurable.vst3");
    for (char const* const blockSize : {"1", "63", "65536"}) {
        ProgramResult const result =
            RunVynhost({"render", module, "-i", "in.wav", "-o", "out.wav", "--block-size", blockSize},
                       "cd " + mFolder.Path().string() + ";");
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(ReadClip(mOutput).samples, ReadClip(mInput).samples) << blockSize;
    }
}

} // namespace
