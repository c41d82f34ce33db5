#pragma once

#include "apps/VynhostFixture.h"
#include "vynhost/CommandError.h"
#include "vynhost/ScriptCommand.h"

#include <string_view>

namespace vyntest {

/// Runs scripts in the test's own process on a plug-in that can be told how to behave: a stereo effect with one
/// parameter, the gain, unless said otherwise.
class ScriptTest : public RenderCommandTest {
protected:
    /// The document of a script that ends well, or of one that fails.
    nlohmann::json Run(std::string_view source, vynhost::ScriptRequest request = {}) const {
        mFolder.AddFile("script.js", source);
        request.path = mFolder.Path() / "script.js";
        request.plugin = mFixture.GetPath();
        return RunFile(std::move(request));
    }

    static nlohmann::json RunFile(vynhost::ScriptRequest request) {
        request.json = true;
        try {
            return nlohmann::json::parse(vynhost::RunScript(request));
        } catch (vynhost::FailedReport const& failure) {
            return nlohmann::json::parse(failure.text);
        } catch (vynhost::CommandError const& error) {
            return {{"error", error.what()}, {"line", nullptr}};
        }
    }

    struct BadScript {
        std::string_view source;
        std::string_view error; ///< part of it
        int line = 1;           ///< 0: none is told
    };

    void ExpectError(BadScript const& bad, vynhost::ScriptRequest const& request = {}) const {
        nlohmann::json const document = Run(bad.source, request);
        std::string const error = document.value("error", "");
        EXPECT_NE(error.find(bad.error), std::string::npos) << bad.source.substr(0, 200) << "\n" << document;
        EXPECT_TRUE(bad.line == 0 || document.at("line") == bad.line) << document;
    }

    /// A path as a literal of the language.
    static std::string Quote(std::filesystem::path const& path) { return nlohmann::json(path.string()).dump(); }

    std::string RenderCall() const { return "render(" + Quote(mInput) + ", " + Quote(mOutput) + ")"; }
};

} // namespace vyntest
