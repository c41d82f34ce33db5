#pragma once

#include "apps/AudioFiles.h"
#include "apps/RunVynhost.h"
#include "support/FixtureModule.h"
#include "support/TemporaryFolder.h"
#include "vynhost/RenderCommand.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <set>

namespace vyntest {

inline std::filesystem::path const kRealPlugins = "/usr/lib/vst3";

/// All of zam-plugins; none where the package isn't installed.
/// [any-thread]
inline std::set<std::filesystem::path> ListZamPlugins() {
    std::set<std::filesystem::path> modules;
    if (std::filesystem::exists(kRealPlugins / "ZamVerb.vst3"))
        for (auto const& entry : std::filesystem::directory_iterator(kRealPlugins))
            if (entry.path().filename().string().starts_with("Za"))
                modules.insert(entry.path());
    return modules;
}

/// A folder with a stereo file of a second of noise, to be rendered by the program.
class VynhostTest : public testing::Test {
protected:
    VynhostTest() { WriteClip(mInput, MakeNoise(2, 48000)); }

    std::vector<std::string> Arguments(std::string const& module, std::vector<std::string> const& more = {}) const {
        std::vector<std::string> arguments{"render", module, "-i", mInput, "-o", mOutput};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    nlohmann::json Render(std::string const& module, std::vector<std::string> more = {}) const {
        more.push_back("--json");
        ProgramResult const result = RunVynhost(Arguments(module, more));
        EXPECT_EQ(result.status, 0) << module << "\n" << result.out << result.err;
        return nlohmann::json::parse(result.out, nullptr, false);
    }

    struct Failure {
        int status;
        std::vector<std::string> arguments; ///< behind those that all have
        std::string saying;                 ///< part of what is said
    };

    /// Each ends so, and leaves no file behind.
    void ExpectFailures(std::vector<std::string> const& command, std::vector<Failure> const& failures) const {
        auto const before = Names();
        for (Failure const& one : failures) {
            std::vector<std::string> arguments = command;
            arguments.insert(arguments.end(), one.arguments.begin(), one.arguments.end());
            ProgramResult const result = RunVynhost(arguments);
            EXPECT_EQ(result.status, one.status) << result.err;
            EXPECT_NE(result.err.find(one.saying), std::string::npos) << result.err << one.saying;
            EXPECT_EQ(Names(), before);
        }
    }

    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (auto const& entry : std::filesystem::directory_iterator(mFolder.Path()))
            names.insert(entry.path().filename());
        return names;
    }

    TemporaryFolder mFolder;
    std::filesystem::path mInput = mFolder.Path() / "in.wav";
    std::filesystem::path mOutput = mFolder.Path() / "out.wav";
};

/// The test process holds the fixture and the command runs in it, so that the plug-in can be told how to behave.
class RenderCommandTest : public VynhostTest {
protected:
    nlohmann::json RenderConfigured(vynfixtures::FixtureConfiguration const& configuration) {
        return RenderConfigured(configuration, MakeRequest());
    }

    /// @param sink  called with each call of the plug-in
    nlohmann::json RenderConfigured(vynfixtures::FixtureConfiguration const& configuration,
                                    vynhost::RenderRequest const& request,
                                    void (*sink)(vynfixtures::FixtureCall const*) = nullptr) {
        mFixture.Configure(configuration);
        mFixture->setSink(sink);
        auto document = nlohmann::json::parse(vynhost::RunRender(request));
        mFixture->setSink(nullptr);
        return document;
    }

    vynhost::RenderRequest MakeRequest() const {
        vynhost::RenderRequest request{.modulePath = mFixture.GetPath(), .inputPath = mInput, .outputPath = mOutput};
        request.json = true;
        return request;
    }

    vynfixtures::FixtureModule mFixture{"configurable.vst3"};
};

} // namespace vyntest
