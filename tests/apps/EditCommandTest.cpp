// `vynhost edit` as a program, with real plug-ins on a display without a screen.

#include "apps/EditProcess.h"
#include "apps/PictureColours.h"
#include "apps/VynhostFixture.h"
#include "support/ScopedVariable.h"
#include "support/VirtualDisplay.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>

#include "apps/EditXClient.h"

using namespace vyntest;
using namespace vynfixtures;
using nlohmann::json;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

constexpr char const* kVST3 = "/usr/lib/vst3/ZamComp.vst3";
constexpr char const* kVST = "/usr/lib/vst/MVerb-vst.so";

struct Knob {
    std::string plugin;
    std::string title;
    int x;
    int y;
    std::string parameter;
};

Knob const kVST3Knob{kVST3, "ZamComp", 45, 66, "Attack"};
Knob const kVSTKnob{kVST, "MVerb-vst", 73, 50, "Mix"};

class EditCommandTest : public testing::Test {
protected:
    void SetUp() override {
        if (mDisplay.GetName().empty())
            GTEST_SKIP() << "the package xvfb is not installed";
        for (char const* const plugin : {kVST3, kVST}) {
            if (!fs::exists(plugin))
                GTEST_SKIP() << "the packages zam-plugins and dpf-plugins-vst are not installed";
        }
    }

    // Moves a knob until the program tells of it; null when it doesn't.
    json Turn(EditProcess& editing, Knob const& knob) const {
        std::string const at = std::to_string(knob.x) + " " + std::to_string(knob.y);
        std::string drag = "DISPLAY=" + mDisplay.GetName() + " xdotool mousemove " + at + " mousedown 1";
        for (int step = 0; step < 5; ++step)
            drag += " mousemove_relative -- 0 -4";
        drag += " mouseup 1";
        json edit;
        // A plug-in that is slow to come up misses a drag.
        for (int attempt = 0; attempt < 10 && edit.is_null(); ++attempt) {
            if (std::system(drag.c_str()) != 0)
                return "xdotool failed";
            do {
                edit = editing.Await("edit", 2.0);
            } while (!edit.is_null() && edit.at("value").is_null());
        }
        return edit;
    }

    // The window may be told of before it is there for others.
    void Close(std::string const& title) const {
        ScopedVariable const variable("DISPLAY", mDisplay.GetName().c_str());
        EditXClient client;
        EditXClient::Window const window = client.Find(title);
        ASSERT_NE(window, 0U);
        client.SendClose(window);
    }

    std::string Path(char const* name) const { return mFolder.Path() / name; }

    VirtualDisplay mDisplay;
    TemporaryFolder mFolder;
};

TEST_F(EditCommandTest, EditsOfRealPluginsAreToldAndTheStateKeepsThem) {
    for (Knob const& knob : {kVST3Knob, kVSTKnob}) {
        EditProcess editing(mDisplay.GetName(), {knob.plugin, "--save-state", Path("state.xml")});
        json const opened = editing.Await("opened");
        ASSERT_FALSE(opened.is_null()) << knob.plugin;
        EXPECT_EQ(opened.at("name"), knob.title);
        EXPECT_GT(opened.at("width"), 100);
        json const edit = Turn(editing, knob);
        ASSERT_FALSE(edit.is_null()) << knob.plugin;
        EXPECT_EQ(edit.at("name"), knob.parameter);
        EXPECT_TRUE(edit.at("display").is_number());
        editing.Signal(SIGTERM);
        EXPECT_EQ(editing.Await("state"), (json{{"path", Path("state.xml")}}));
        EXPECT_EQ(editing.AwaitEnd(), 0);
        std::string const kept = ReadText(Path("state.xml"));

        for (bool const untouched : {true, false}) {
            std::vector<std::string> arguments{knob.plugin, "--save-state", Path("again.xml")};
            if (!untouched)
                arguments.insert(arguments.end(), {"--state", Path("state.xml")});
            EditProcess again(mDisplay.GetName(), arguments);
            ASSERT_FALSE(again.Await("opened").is_null());
            again.Signal(SIGINT);
            EXPECT_EQ(again.AwaitEnd(), 0);
            EXPECT_EQ(kept != ReadText(Path("again.xml")), untouched) << knob.plugin;
        }
    }
}

TEST_F(EditCommandTest, PictureOfARealPluginIsNotBlank) {
    for (char const* const plugin : {kVST3, "/usr/lib/vst/ZamComp-vst.so", kVST}) {
        std::string const path = Path("a.png");
        EditProcess editing(mDisplay.GetName(), {plugin, "--screenshot", path, "--after", "1.5"});
        EXPECT_EQ(editing.Await("screenshot"), (json{{"path", path}}));
        EXPECT_EQ(editing.AwaitEnd(), 0);
        EXPECT_GT(CountColours(path), 100U) << plugin;
    }
}

TEST_F(EditCommandTest, WindowThatIsClosedEndsTheCommandAndAPictureNotTakenIsAFailure) {
    for (std::vector<std::string> const& picture :
         {std::vector<std::string>{}, {"--screenshot", Path("a.png"), "--after", "100"}}) {
        std::vector<std::string> arguments{kVST3};
        arguments.insert(arguments.end(), picture.begin(), picture.end());
        EditProcess editing(mDisplay.GetName(), arguments);
        ASSERT_FALSE(editing.Await("opened").is_null());
        Close("ZamComp");
        EXPECT_EQ(editing.AwaitEnd(), picture.empty() ? 0 : 1);
    }
    EXPECT_FALSE(fs::exists(Path("a.png")));
}

TEST_F(EditCommandTest, DisplayThatGoesAwayIsAFailureAndTheStateIsSaved) {
    for (Knob const& knob : {kVST3Knob, kVSTKnob}) {
        VirtualDisplay display;
        EditProcess editing(display.GetName(), {knob.plugin, "--save-state", Path("state.xml")});
        ASSERT_FALSE(editing.Await("opened").is_null());
        display.Kill();
        EXPECT_EQ(editing.AwaitEnd(), 1) << knob.plugin;
        EXPECT_TRUE(ReadText(Path("state.xml")).starts_with("<?xml")) << knob.plugin;
        fs::remove(Path("state.xml"));
    }
}

TEST_F(EditCommandTest, FailuresSayWhatIsMissing) {
    std::string const on = "DISPLAY=" + mDisplay.GetName();
    struct Case {
        std::string shell;
        std::vector<std::string> arguments;
        int status;
        std::string saying;
    };
    std::vector<Case> const cases{
        {"DISPLAY=", {kVST3}, 1, "DISPLAY is not set"},
        {"DISPLAY=:60000", {kVST3}, 1, "the display :60000 can't be opened"},
        {on, {FixturePath("configurable.vst3")}, 3, "configurable.vst3: has no window of its own"},
        {on, {Path("missing.vst3")}, 3, "missing.vst3: "},
        {on, {kVST3, "--after", "1"}, 2, "--screenshot"},
        {on, {kVST3, "--screenshot", Path("a.png"), "--after", "nan"}, 2, "--after"},
        {on, {kVST3, "--screenshot", Path("none/a.png")}, 1, "none/a.png: "},
        {on, {kVST3, "--save-state", Path("a"), "--screenshot", Path("a")}, 2, "as well as"},
        {on, {kVST3, "--state", Path("missing.xml")}, 1, "missing.xml: "},
    };
    for (Case const& one : cases) {
        std::vector<std::string> arguments{"edit"};
        arguments.insert(arguments.end(), one.arguments.begin(), one.arguments.end());
        ProgramResult const result = RunVynhost(arguments, one.shell);
        EXPECT_EQ(result.status, one.status) << result.err;
        EXPECT_THAT(result.err, HasSubstr(one.saying));
        EXPECT_EQ(result.out, "");
        arguments.push_back("--json");
        std::string const line = RunVynhost(arguments, one.shell).out;
        EXPECT_EQ(line.find('\n') + 1, line.size()) << line;
        EXPECT_TRUE(json::parse(line, nullptr, false).contains("error")) << line;
    }
}

} // namespace
