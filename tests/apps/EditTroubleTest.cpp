// `vynhost edit` with an effect that makes trouble: nothing that was edited is lost, and the program can be ended.

#include "apps/EditProcess.h"
#include "apps/VynhostFixture.h"
#include "support/ScopedVariable.h"
#include "support/VirtualDisplay.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>

using namespace vyntest;
using nlohmann::json;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

class EditTroubleTest : public testing::Test {
protected:
    void SetUp() override {
        if (mDisplay.GetName().empty())
            GTEST_SKIP() << "the package xvfb is not installed";
    }

    // The failure that the program ends with.
    std::string Fail(char const* trouble, std::vector<std::string> arguments, bool dropFolder = false) {
        ScopedVariable const variable("TROUBLE", trouble);
        arguments.insert(arguments.begin(), {VYNHOST_TROUBLE_EFFECT, "--save-state", mState});
        EditProcess editing(mDisplay.GetName(), arguments);
        EXPECT_FALSE(editing.Await("opened").is_null());
        if (dropFolder)
            fs::remove_all(mPictures);
        json const error = editing.Await("error");
        EXPECT_EQ(editing.AwaitEnd(), 1);
        return error.is_string() ? error.get<std::string>() : std::string();
    }

    bool TakeState() {
        std::string start;
        std::getline(std::ifstream(mState), start);
        fs::remove(mState);
        return start.starts_with("<?xml");
    }

    VirtualDisplay mDisplay;
    TemporaryFolder mFolder;
    std::string mState = mFolder.Path() / "state.xml";
    fs::path mPictures = mFolder.Path() / "pictures";
};

TEST_F(EditTroubleTest, StateIsSavedWhenThePictureFailsOrAPluginsOwnConnectionBreaksOnAThreadOfItsOwn) {
    fs::create_directory(mPictures);
    std::vector<std::string> const picture{"--screenshot", mPictures / "a.png", "--after", "0.5"};
    EXPECT_THAT(Fail("hide", picture), HasSubstr("gives no picture"));
    EXPECT_TRUE(TakeState());
    EXPECT_THAT(Fail("grow", picture), HasSubstr("8193 by 100 pixels is too large"));
    EXPECT_TRUE(TakeState());
    EXPECT_NE(Fail("", picture, true), "");
    EXPECT_TRUE(TakeState());
    EXPECT_THAT(Fail("break on a thread", {}), HasSubstr("state is saved"));
    EXPECT_TRUE(TakeState());
}

TEST_F(EditTroubleTest, NeitherGesturesThatNeverCeaseNorManyWishesNorABreakAtTheUnloadingSpoilTheEnd) {
    struct Case {
        char const *trouble, *awaited;
        std::vector<int> signals;
    };
    for (Case const& one : {Case{"flood", "edit", {SIGINT}}, Case{"break when unloaded", "opened", {SIGINT}},
                            Case{"", "opened", {SIGHUP, SIGTERM, SIGHUP}}}) {
        ScopedVariable const variable("TROUBLE", one.trouble);
        EditProcess editing(mDisplay.GetName(), {VYNHOST_TROUBLE_EFFECT, "--save-state", mState});
        ASSERT_FALSE(editing.Await(one.awaited).is_null()) << one.trouble;
        for (int const signal : one.signals)
            editing.Signal(signal);
        EXPECT_FALSE(editing.Await("state").is_null()) << one.trouble;
        EXPECT_EQ(editing.AwaitEnd(), 0) << one.trouble;
        EXPECT_TRUE(TakeState()) << one.trouble;
    }
}

TEST_F(EditTroubleTest, WishThatIsRepeatedEndsAProgramThatHangs) {
    for (char const* const trouble : {"hang when loaded", "hang", "hang when closed"}) {
        ScopedVariable const variable("TROUBLE", trouble);
        EditProcess editing(mDisplay.GetName(), {VYNHOST_TROUBLE_EFFECT});
        if (std::string(trouble) == "hang when closed") {
            EXPECT_FALSE(editing.Await("opened").is_null());
            editing.Signal(SIGTERM);
        }
        ASSERT_TRUE(editing.AwaitErrors("hangs")) << trouble;
        int end = -1;
        for (int attempt = 0; attempt < 50 && end == -1; ++attempt) {
            editing.Signal(SIGINT);
            end = editing.AwaitEnd(0.1);
            EXPECT_TRUE(end == -1 || attempt > 0 || std::string(trouble) == "hang when closed") << trouble;
        }
        EXPECT_EQ(end, 128 + SIGINT) << trouble;
    }
}

} // namespace
