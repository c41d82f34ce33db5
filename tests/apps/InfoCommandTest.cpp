#include "vynhost/InfoCommand.h"
#include "apps/VynhostFixture.h"

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;

namespace {

json Layouts(json const& buses) {
    json layouts = json::array();
    for (json const& bus : buses)
        layouts.push_back(bus.at("layout"));
    return layouts;
}

TEST(InfoCommandTest, DocumentHoldsTheRowAndTheFactsOfThePlugin) {
    FixtureConfiguration configuration;
    configuration.SetBuses({FixtureBus::Make(3, u"Main in"), FixtureBus::Make(0x80000, u"Key", 1)},
                           {FixtureBus::Make(3, u"Main out")});
    configuration.busAnswer = FixtureBusAnswer::SymmetricOnly;
    configuration.AddPrograms(5);
    configuration.latency = 77;
    configuration.tail = 1000;
    FixtureModule const fixture("configurable.vst3", configuration);
    json const document = json::parse(vynhost::RunInfo({.modulePath = fixture.GetPath(), .json = true}));
    json const stereo = {100, 101};
    json const mono = {0};
    json const surround = {100, 101, 102, 103, 104, 105};
    json const expected{{"name", "Fixture"},
                        {"vendor", "Fixture Works"},
                        {"technology", "VST3"},
                        {"path", fixture.GetPath()},
                        {"synth", false},
                        {"enabled", true},
                        {"latency", 77},
                        {"tail", 1000},
                        {"presets", 5},
                        {"editor", nullptr},
                        {"mono", true},
                        {"inputs",
                         {{{"name", "Main in"}, {"type", "main"}, {"layout", stereo}},
                          {{"name", "Key"}, {"type", "sidechain"}, {"layout", mono}}}},
                        {"outputs", json::array({{{"name", "Main out"}, {"type", "main"}, {"layout", stereo}}})}};
    for (auto const& [key, value] : expected.items())
        EXPECT_EQ(document.at(key), value) << key;
    // Each is asked of the buses that the plug-in came with, not of the answer before.
    for (auto const& [name, layout] :
         {std::pair("mono", mono), std::pair("stereo", stereo), std::pair("5.1", surround)}) {
        EXPECT_EQ(Layouts(document.at("answers").at(name).at("inputs")), (json{layout, mono})) << name;
        EXPECT_EQ(Layouts(document.at("answers").at(name).at("outputs")), json::array({layout})) << name;
    }
    for (char const* const key : {"id", "version", "category", "categoryName", "stereo", "parameters", "chunk"})
        EXPECT_TRUE(document.contains(key)) << key;
    EXPECT_EQ(fixture->liveObjects(), 0);
}

TEST(InfoCommandTest, RealPluginsAreTold) {
    if (!std::filesystem::exists(kRealPlugins / "ZaMaximX2.vst3"))
        GTEST_SKIP() << "the package zam-plugins is not installed";
    json const limiter = json::parse(RunVynhost({"info", kRealPlugins / "ZaMaximX2.vst3", "--json"}).out);
    EXPECT_EQ(limiter.at("latency"), 480);
    EXPECT_EQ(limiter.at("categoryName"), "Dynamics");
    std::string const text = RunVynhost({"info", kRealPlugins / "ZamCompX2.vst3"}).out;
    for (char const* const row :
         {"\"Sidechain Input\", side chain, Mono (M)\n", "\"Audio Output\", main, Stereo (L R)\n", "Damien Zammit\n",
          "Stereo, side chain Mono in; Stereo out\n"})
        EXPECT_NE(text.find(row), std::string::npos) << text;
}

} // namespace
