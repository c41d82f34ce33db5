#include "apps/AudioFiles.h"
#include "apps/MidiFiles.h"
#include "apps/RunVynhost.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace vyntest {
namespace {

using json = nlohmann::json;

/// Every VST 2.x plug-in of the machine through the program, as a user would have it. What a plug-in crashes is a
/// command of its own.
class RealVSTSweepTest : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists("/usr/lib/vst/ZamComp-vst.so"))
            GTEST_SKIP() << "zam-plugins isn't installed";
        WriteClip(Path("in.wav"), MakeNoise(2, 4410));
        WriteMidi(Path("song.mid"), MidiFileText(480, {MidiTrack({0, 0x90, 60, 100, 96, 0x80, 60, 0})}));
    }

    std::filesystem::path Path(std::string const& name) const { return mFolder.Path() / name; }

    json Run(std::vector<std::string> arguments) const {
        arguments.push_back("--json");
        ProgramResult const result = RunVynhost(arguments, "VYNHOST_HOME=" + Path("home").string());
        EXPECT_EQ(result.status, 0) << arguments[0] << " " << arguments[1] << result.out << result.err;
        return json::parse(result.out, nullptr, false);
    }

    AudioClip Render(json const& row, std::vector<std::string> const& more) const {
        std::vector<std::string> arguments{"render", row.at("id"), "-o", Path("out.wav")};
        auto const source = row.at("synth").get<bool>() ? std::vector<std::string>{"--midi", Path("song.mid")}
                                                        : std::vector<std::string>{"-i", Path("in.wav")};
        arguments.insert(arguments.end(), source.begin(), source.end());
        arguments.insert(arguments.end(), more.begin(), more.end());
        Run(arguments);
        return ReadClip(Path("out.wav"));
    }

    TemporaryFolder mFolder;
};

TEST_F(RealVSTSweepTest, EachIsFoundRendersNumbersAndTakesItsStateBackBitForBit) {
    json const scan = Run({"scan", "/usr/lib/vst"});
    std::vector<std::string> refused;
    for (json const& module : scan.at("modules")) {
        if (module.at("verdict") != "filed")
            refused.push_back(std::filesystem::path(module.at("path").get<std::string>()).stem());
    }
    // It is the code that the plug-ins beside it share.
    EXPECT_THAT(refused, testing::Each(testing::StartsWith("lsp-plugins-vst2-")));

    json const list = Run({"list"});
    EXPECT_EQ(list.size() + refused.size(), scan.at("modules").size());
    for (json const& row : list) {
        SCOPED_TRACE(row.at("name").get<std::string>());
        AudioClip const clip = Render(row, {"--save-state", Path("one.fxp")});
        EXPECT_TRUE(std::ranges::all_of(clip.samples, [](float sample) { return std::isfinite(sample); }));
        Render(row, {"--state", Path("one.fxp"), "--save-state", Path("two.fxp")});
        EXPECT_FALSE(ReadText(Path("one.fxp")).empty());
        EXPECT_TRUE(ReadText(Path("one.fxp")) == ReadText(Path("two.fxp")));
    }
}

} // namespace
} // namespace vyntest
