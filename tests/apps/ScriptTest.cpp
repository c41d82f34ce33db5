#include "apps/ScriptFixture.h"

#include <algorithm>

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;
using vynhost::ScriptRequest;

namespace {

TEST_F(ScriptTest, WrongCallsAreErrorsWithTheirPlace) {
    for (BadScript const& bad : std::initializer_list<BadScript>{
             {"filter.getParameter()", "TypeError: AudioFilter.getParameter takes 1"},
             {"1\nfilter.getParameter(0, 1)", "takes 1", 2},
             {"filter.getParameter('0')", "a wrong 'index'"},
             {"filter.getParameter(null)", "a wrong 'index'"},
             {"filter.getParameter(NaN)", "a wrong 'index'"},
             {"filter.getParameter(1e10)", "a wrong 'index'"},
             {"filter.setParameter(0, NaN)", "a wrong 'value'"},
             {"filter.assignChannelMapping(1, 0, 0)", "a wrong 'isInput'"},
             {"filter.requestBusConfiguration(1, [])", "a wrong 'inputs'"},
             {"filter.requestBusConfiguration([{}], [])", "a wrong 'inputs'"},
             {"filter.requestBusConfiguration([], [filter])", "requestBusConfiguration refuses"},
             {"filter.getParameter.call({}, 0)", "Error"},
             {"'use strict'; filter = 1", "Error"},
             {"'use strict'; filter.ID = 1", "Error"},
             {"createBus('middle', 'mono')", "there is no type of bus \"middle\""},
             {"createBus('main', '9.1')", "there is no layout \"9.1\"; there are mono, stereo"},
             {"open('nobody')", "nobody: there is no such file"},
             {"open('a\\0b')", "NUL"},
             {"open(args[0])", "a wrong 'plugin'"},
             {"render('a', 'b\\0')", "NUL"},
             {"render('/nowhere', 'b')", "/nowhere: cannot be read: there is no such file"},
             {"close(); filter.displayName", "displayName refuses"},
             {"close(); parameterName(0)", "no plug-in is open"},
             {"close(); render('a', 'b')", "no plug-in is open"},
             {"new vynaudiofilterhost.AudioFilter()", "Error"},
             {"throw 7", "7"},
             {"throw undefined", "undefined"},
             {"throw {toString: function () { throw 1; }}", "", 0},
             {"\n\nfoo(", "SyntaxError", 0},
             {"eval('foo(')", "SyntaxError"},
             {"try { nobody } finally { }", "ReferenceError"},
         })
        ExpectError(bad);
}

TEST_F(ScriptTest, IndicesOutOfRangeGetTheNeutralAnswerOfTheFilter) {
    EXPECT_EQ(Run("[filter.getParameter(-1), filter.getParameter(2147483647)].join() + parameterName(9) + "
                  "parameterText(-1) + findParameter('nobody') + filter.setParameter(9, 1) + "
                  "filter.getFilterChannelForTarget(true, 99) + filter.assignChannelMapping(true, -5, -7)")
                  .at("result"),
              "0,0-1true-1true");
}

TEST_F(ScriptTest, PrintedLinesAndResultAreOneDocument) {
    ScriptRequest request;
    request.arguments = {"a", "--json"};
    json const document = Run("print(args.length, args[1]); print(); print('x\\ny', {}, [1]); "
                              "isEqual(filter, filter) && filter instanceof vynaudiofilterhost.AudioFilter",
                              request);
    EXPECT_EQ(document.at("printed"), (json{"2 --json", "", "x\ny [object Object] 1"}));
    EXPECT_EQ(document.at("result"), true);
    EXPECT_EQ(Run("print(1); throw 2").at("printed"), json{"1"});
    EXPECT_EQ(Run("filter").at("result").at("displayName"), "Fixture");
    EXPECT_EQ(Run("var s = 'x'; while (s.length < 1 << 20) s += s; for (;;) print(s)").at("error"),
              "Error: print failed: more is printed than one document can hold");
}

TEST_F(ScriptTest, FilterIsOneObjectWhateverIsOpen) {
    json const document = Run("var same = filter, old = filter.getParameter(0); filter.setParameter(0, 1);"
                              "try { open('nobody') } catch (e) { print(same.getParameter(0)) }"
                              "open(" +
                              Quote(mFixture.GetPath()) +
                              "); print(same.getParameter(0) === old);"
                              "close(); close(); try { same.ID } catch (e) { print(e.name) }"
                              "open(" +
                              Quote(mFixture.GetPath()) + "); isEqual(same, filter) && same.ID === filter.ID");
    EXPECT_EQ(document.at("printed"), (json{"1", "true", "TypeError"})) << document;
    EXPECT_EQ(document.at("result"), true);
    EXPECT_EQ(mFixture->liveObjects(), 0);
}

TEST_F(ScriptTest, RenderingTakesTheValuesAndLeavesTheFilterAsItWas) {
    json const document = Run("var print3 = function (r) { print(r.samples, r.seconds, r.channels, r.latency, "
                              "(r.rmsOut / r.rmsIn).toFixed(3)) };"
                              "filter.setParameter(findParameter('parameter 0'), 0.25);"
                              "print3(" +
                              RenderCall() + "); print3(" + RenderCall() +
                              ");"
                              "filter.setParameter(0, 0.5); print3(" +
                              RenderCall() +
                              ");"
                              "filter.getParameter(0) + filter.inputBuses[0].layout");
    EXPECT_EQ(document.at("printed"), (json{"48000 1 2 0 0.500", "48000 1 2 0 0.500", "48000 1 2 0 1.000"}))
        << document;
    EXPECT_EQ(document.at("result"), "0.5Stereo");
    EXPECT_EQ(ReadClip(mOutput).samples, ReadClip(mInput).samples);
}

// A stereo file of which each channel has a sign of its own tells where it went.
TEST_F(ScriptTest, BusesAndChannelMapsOfTheScriptHold) {
    WriteClip(mInput, MakeClip(2, 4800, [](std::size_t, std::size_t c) { return c == 0 ? 0.25F : -0.5F; }));
    struct Case {
        std::string_view source;
        std::vector<float> frame;
        int input; ///< arrangement that the plug-in was asked for last
    };
    std::string_view const mono =
        "filter.requestBusConfiguration([createBus('main', 'mono')], [createBus('main', 'mono')]);";
    std::string const swapped = "filter.assignChannelMapping(false, 0, 1); filter.assignChannelMapping(false, 1, 0);";
    std::string const away = "filter.removeChannelMapping(true, 1);";
    for (Case const& one : std::initializer_list<Case>{{"", {0.25F, -0.5F}, 3},
                                                       {mono, {0.25F, -0.5F}, 0x80000},
                                                       {swapped, {-0.5F, 0.25F}, 3},
                                                       {away, {0.25F, 0.0F}, 3}}) {
        mFixture.Configure({});
        json const document =
            Run(std::string(one.source) + RenderCall() +
                "; filter.inputBuses[0].channelCount + ' ' + filter.getFilterChannelForTarget(false, 1)");
        AudioClip const out = ReadClip(mOutput);
        ASSERT_EQ(out.channels, 2) << document;
        EXPECT_EQ((std::vector{out.At(2400, 0), out.At(2400, 1)}), one.frame) << one.source;
        EXPECT_EQ(document.at("result"), one.source == mono ? "1 1" : one.source == swapped ? "2 0" : "2 1");
    }
    ExpectError({"filter.assignChannelMapping(true, 0, 2); " + RenderCall(), "names channel 2 of the track"});
}

TEST_F(ScriptTest, NothingIsRenderedOverWhatIsReadNorHalf) {
    auto const before = Names();
    mFixture.Configure({.faults = 1ULL << static_cast<unsigned>(FixtureFault::ProcessThrows)});
    ExpectError({RenderCall(), "render failed"});
    mFixture.Configure({});
    ExpectError({"render(" + Quote(mInput) + "," + Quote(mInput) + ")", "is the input as well as the output"});
    ExpectError({"render(" + Quote(mInput) + "," + Quote(mFolder.Path() / "script.js") + ")", "is the input as well"});
    ExpectError({"render(" + Quote(mInput) + "," + Quote(mFixture.GetPath()) + ")", "is the input as well"});
    auto after = Names();
    after.erase("script.js");
    EXPECT_EQ(after, before);
}

TEST_F(ScriptTest, FilesThatAreNoScriptsAreRefused) {
    for (BadScript const& bad : std::initializer_list<BadScript>{{"", "is empty", 0},
                                                                 {"1\n2\xFF", "is no UTF-8 text", 2},
                                                                 {"1\n\xED\xA0\x80", "is no UTF-8 text", 2},
                                                                 {{"1\n\0", 3}, "SyntaxError", 0},
                                                                 {"\xEF\xBB\xBF#!x\nnobody", "ReferenceError", 2},
                                                                 {"\xEF\xBB\xBF", "", 0}})
        ExpectError(bad);
    ExpectError({std::string((16 << 20) + 1, ' '), "is larger than 16 MiB", 0});
    EXPECT_EQ(Run("#!/usr/bin/vynhost\n6 * 7").at("result"), 42);
    ScriptRequest request;
    request.path = mFolder.Path();
    EXPECT_EQ(RunFile(request).at("error"), "cannot be read: it is a folder");
}

TEST_F(ScriptTest, CommandLineIsHeldToAndFailuresAreTold) {
    mFolder.AddFile("bad.js", "print(1);\nfunction f() { nobody }\nf()");
    mFolder.AddFile("good.js", "print(args); print(catalogue.length)");
    std::string const bad = mFolder.Path() / "bad.js";
    std::string const good = mFolder.Path() / "good.js";
    ExpectFailures({"script"}, {{1, {bad}, bad + ":2: ReferenceError: "},
                                {1, {bad}, "\n    f (" + bad + ":2)\n"},
                                {1, {"/nowhere.js"}, "/nowhere.js: cannot be read: there is no such file"},
                                {2, {}, "FILE"},
                                {2, {good, "--timeout", "nan"}, "--timeout"},
                                {2, {good, "--memory", "0"}, "--memory"},
                                {2, {good, "--list"}, "--list"},
                                {2, {"--markdown"}, "--list"},
                                {3, {good, "nobody"}, "nobody: there is no such file"}});
    ProgramResult const result = RunVynhost({"script", good, "--", "--json", "x"});
    EXPECT_EQ(result.out, "--json,x\n0\n") << result.err;
    json const classes = json::parse(RunVynhost({"script", "--list", "--json"}).out);
    for (auto const& item : classes.at(0).at("items"))
        EXPECT_FALSE(item.at("description").get<std::string>().empty());
}

TEST_F(ScriptTest, PluginsOfTheCatalogueAreOpenedByName) {
    std::filesystem::copy_file(mFixture.GetPath(), mFolder.Path() / "one.vst3");
    mFolder.AddFolder("home");
    std::string const shell = "VYNHOST_HOME=" + (mFolder.Path() / "home").string();
    ASSERT_EQ(RunVynhost({"scan", mFolder.Path()}, shell).status, 0);
    mFolder.AddFile("catalogue.js", "var e = catalogue[0]; print(e.name, e.technology, e.enabled, e.vendor);"
                                    "for (var i = 0; i < 3; ++i) open(e.name); open(e.id);"
                                    "print(catalogue.length, filter.displayName, isEqual(e, catalogue[0]))");
    ProgramResult const result = RunVynhost({"script", mFolder.Path() / "catalogue.js"}, shell);
    EXPECT_EQ(result.out, "Fixture VST3 true Fixture Works\n1 Fixture true\n") << result.err;
}

double MeasurePeak(AudioClip const& clip, std::size_t channel) {
    double peak = 0.0;
    for (std::size_t frame = 0; frame < clip.FrameCount(); ++frame)
        peak = std::max(peak, std::abs(static_cast<double>(clip.At(frame, channel))));
    return peak;
}

class ScriptExamplesTest : public VynhostTest {
protected:
    void SetUp() override {
        if (ListZamPlugins().empty())
            GTEST_SKIP() << "the package zam-plugins is not installed";
    }

    std::string Run(std::string const& example, std::string const& plugin,
                    std::vector<std::string> const& files) const {
        std::vector<std::string> arguments{"script", VYNHOST_EXAMPLES "/" + example, kRealPlugins / plugin, "--"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        ProgramResult const result = RunVynhost(arguments);
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        return result.out;
    }
};

// 0 to 30 dB in five steps.
TEST_F(ScriptExamplesTest, SweepRendersEachStepOfTheParameter) {
    std::string const out = Run("sweep.js", "ZamComp.vst3", {mInput, mFolder.Path(), "makeup"});
    EXPECT_EQ(std::ranges::count(out, '\n'), 5) << out;
    EXPECT_TRUE(out.starts_with("Makeup 0.000000 dB: RMS ")) << out;
    double former = 0.0;
    for (int step = 0; step <= 4; ++step) {
        double const peak = MeasurePeak(ReadClip(mFolder.Path() / ("step" + std::to_string(step) + ".wav")), 0);
        EXPECT_TRUE(step == 0 || std::abs(peak / former - 2.37) < 0.05) << step << ": " << peak;
        former = peak;
    }
}

TEST_F(ScriptExamplesTest, MonoTellsTheBusesAndRendersThroughThem) {
    std::string const out = Run("mono.js", "ZamComp.vst3", {mInput, mOutput});
    EXPECT_TRUE(out.starts_with("ZamComp: Audio Input (main, Mono), Sidechain Input (sidechain, Mono) -> Audio Output "
                                "(main, Mono)\nasked for mono: "))
        << out;
    EXPECT_NE(out.find("it is mono now\nrendered 2 channels\n"), std::string::npos) << out;
    EXPECT_NE(Run("mono.js", "ZamCompX2.vst3", {}).find("it does not do mono"), std::string::npos);
}

// The left channel is pressed down by a loud right one, and stays as it is beside a silent one.
TEST_F(ScriptExamplesTest, SideChainListensToTheRightChannel) {
    std::string const effect = "/usr/lib/vst/ZamComp-vst.so";
    std::vector<double> peaks;
    for (float const loudness : {0.0F, 0.9F}) {
        WriteClip(mInput, MakeClip(2, 24000, [&](std::size_t i, std::size_t c) {
                      return (c == 0 ? 0.1F : loudness) * static_cast<float>(i / 50 % 2 == 0 ? 1 : -1);
                  }));
        Run("sidechain.js", effect, {mInput, mOutput});
        AudioClip clip = ReadClip(mOutput);
        EXPECT_EQ(MeasurePeak(clip, 1), 0.0);
        clip.samples.erase(clip.samples.begin(), clip.samples.begin() + 2 * 12000);
        peaks.push_back(MeasurePeak(clip, 0));
    }
    EXPECT_NEAR(peaks[0], 0.1, 0.01);
    EXPECT_LT(peaks[1], 0.05);
}

} // namespace
