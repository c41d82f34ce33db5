#include "guard/OutputGuard.h"
#include "apps/VynhostFixture.h"
#include "support/NoAllocationScope.h"

#include <gmock/gmock.h>

#include <array>
#include <cfenv>
#include <cfloat>
#include <cmath>

using namespace vyntest;
using testing::Each;
using testing::HasSubstr;
using vynaudiofilterhost::ChannelFlags;
using vynguard::OutputGuard;

namespace {

constexpr int kSamples = 70;

struct Stereo {
    std::array<std::vector<float>, 2> sound{std::vector<float>(kSamples, 0.5F), std::vector<float>(kSamples, 0.5F)};
    std::array<float*, 2> channels{sound[0].data(), sound[1].data()};
    ChannelFlags silent;
};

bool KeepsDenormals() {
    float volatile tiny = 1e-40F;
    tiny = tiny * 0.5F;
    return tiny != 0.0F;
}

TEST(OutputGuardTest, SampleThatMustNotBeHeardSilencesTheBlockInAllChannels) {
    struct Case {
        float sample;
        bool heard;
    };
    for (Case const& one : {Case{NAN, false}, Case{-NAN, false}, Case{INFINITY, false}, Case{-INFINITY, false},
                            Case{FLT_MAX, false}, Case{-1000.0001F, false}, Case{std::nextafter(1000.0F, 2e3F), false},
                            Case{1000.0F, true}, Case{-1000.0F, true}, Case{-0.0F, true}, Case{1e-40F, true}}) {
        for (std::size_t const place : {0U, 31U, 32U, 63U, 64U, 69U}) {
            OutputGuard guard;
            Stereo block;
            {
                NoAllocationScope const scope;
                guard.Run(block.channels.data(), 2, kSamples, block.silent,
                          [&] { block.channels[1][place] = one.sample; });
            }
            EXPECT_THAT(block.sound[0], Each(one.heard ? 0.5F : 0.0F)) << one.sample << " at " << place;
            EXPECT_EQ(block.sound[1][place], one.heard ? one.sample : 0.0F);
            EXPECT_EQ(block.silent, ChannelFlags(one.heard ? 0U : 3U));
            EXPECT_EQ(guard.GetReport().silenced, one.heard ? 0 : 1);
        }
    }
}

TEST(OutputGuardTest, ChannelsFlaggedSilentAreNotRead) {
    OutputGuard guard;
    Stereo block;
    block.channels[0] = nullptr;
    block.silent.Set(0);
    guard.Check(block.channels.data(), 2, kSamples, block.silent);
    EXPECT_EQ(guard.GetReport().silenced, 0);
}

TEST(OutputGuardTest, FloatingPointModeIsThatOfBeforeWhateverThePluginDoesToIt) {
    struct Case {
        void (*process)();
        bool restored;
    };
    for (Case const& one :
         {Case{[] {}, false}, Case{[] { std::feraiseexcept(FE_DIVBYZERO); }, false},
          Case{[] { std::fesetround(FE_UPWARD); }, true}, Case{[] { std::fesetenv(FE_DFL_ENV); }, true},
          Case{[] { std::fesetround(FE_TOWARDZERO), throw 1; }, true}}) {
        OutputGuard guard;
        Stereo block;
        std::fesetround(FE_DOWNWARD);
        bool asExpected = false, thrown = false;
        try {
            guard.Run(block.channels.data(), 2, kSamples, block.silent, [&] {
                asExpected = std::fegetround() == FE_TONEAREST && !KeepsDenormals();
                one.process();
            });
        } catch (int) {
            thrown = true;
        }
        int const rounding = std::fegetround();
        std::fesetround(FE_TONEAREST);
        EXPECT_TRUE(asExpected);
        EXPECT_EQ(rounding, FE_DOWNWARD);
        EXPECT_TRUE(KeepsDenormals());
        EXPECT_EQ(guard.GetReport().modeRestored, one.restored ? 1 : 0);
        EXPECT_EQ(guard.GetReport().silenced, 0);
        EXPECT_THAT(block.sound[1], Each(thrown ? 0.0F : 0.5F));
    }
}

// The plug-in makes an infinite sample in the second block, by its gain of 2.
TEST_F(VynhostTest, RenderSilencesBlocksThatMustNotBeHeardUnlessToldOtherwise) {
    AudioClip clip = MakeNoise(2, 2048);
    clip.samples[2 * 600] = 3e38F;
    WriteClip(mInput, clip);
    for (bool const guarded : {true, false}) {
        std::vector<std::string> arguments{"--set", "Parameter 0=100"};
        if (!guarded)
            arguments.emplace_back("--no-guard");
        nlohmann::json const report = Render(vynfixtures::FixturePath("configurable.vst3"), arguments);
        if (guarded)
            EXPECT_EQ(report.at("guard"), (nlohmann::json{{"silenced", 1}, {"modeRestored", 0}}));
        else
            EXPECT_EQ(report.at("guard"), nullptr);
        EXPECT_EQ(report.at("notes").size(), 1U);
        EXPECT_THAT(report.at("notes").at(0), HasSubstr(guarded ? "1 block with sound" : "not finite"));
        EXPECT_LE(report.at("peakOut"), 2.0);
        AudioClip const out = ReadClip(mOutput);
        for (std::size_t i = 0; i < out.samples.size(); ++i) {
            bool const silent = guarded ? i / 2 / 512 == 1 : i == 1200;
            ASSERT_EQ(out.samples[i], silent ? 0.0F : 2.0F * clip.samples[i]) << guarded << " " << i;
        }
    }
}

} // namespace
