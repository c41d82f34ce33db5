// The window, and what keeps an editor in it, with an editor of the test's own.

#include "vyncore/threads/MainThreadCalls.h"
#include "vynhost/EditFrame.h"
#include "vynhost/EditLoop.h"
#include "vynhost/EditorWindow.h"
#include "vynhost/PNGFile.h"
#include "vynhost/Session.h"
#include "vynhost/XErrors.h"

#include "os/Clock.h"
#include "os/InterruptDescriptor.h"
#include "support/ScopedVariable.h"
#include "support/TemporaryFolder.h"
#include "support/VirtualDisplay.h"

#include <gmock/gmock.h>

#include <csignal>
#include <limits>
#include <png.h>
#include <thread>

#include "apps/EditFakes.h"

using namespace vyntest;
using namespace vynhost;

namespace {

constexpr std::uint64_t kSecondNanos = 1'000'000'000;

class EditWindowTest : public testing::Test {
protected:
    void SetUp() override {
        if (mDisplay.GetName().empty())
            GTEST_SKIP() << "the package xvfb is not installed";
        mErrors.emplace([this] { ++mForeignLosses; });
        mWindow.emplace(*mErrors);
        mFilter = new FakeEditedFilter;
        mEditor = mFilter->editor.get();
        mClient.emplace();
    }

    EditFrame& Open() {
        EXPECT_EQ(mFrame.emplace(*mWindow, *mFilter, mFilter->editor).Open(), mEditor->opens);
        return *mFrame;
    }

    EditXClient::Window Handle() const { return EditXClient::FromHandle(mWindow->GetHandle()); }

    WindowSize Size() {
        mWindow->HandleEvents();
        return mClient->GetSize(Handle());
    }

    EditEnd RunLoop(EditFrame& frame, std::optional<std::uint64_t> deadlineNanos = std::nullopt) {
        os::InterruptDescriptor const interrupt;
        EditLoop loop(*mWindow, frame, *mErrors, interrupt, [this] {
            ++mTurns;
            if (mEachTurn)
                mEachTurn();
        });
        return loop.Run(deadlineNanos);
    }

    VirtualDisplay mDisplay;
    ScopedVariable mVariable{"DISPLAY", mDisplay.GetName().c_str()};
    Session mSession;
    int mForeignLosses = 0;
    int mTurns = 0;
    std::function<void()> mEachTurn;
    std::optional<XErrors> mErrors;
    std::optional<EditorWindow> mWindow;
    boost::intrusive_ptr<FakeEditedFilter> mFilter;
    FakeEditor* mEditor = nullptr;
    std::optional<EditFrame> mFrame;
    std::optional<EditXClient> mClient;
};

TEST_F(EditWindowTest, WindowHasTheSizeThatItIsGivenAndNoOther) {
    EXPECT_EQ(Size(), (WindowSize{640, 480}));
    mWindow->Show();
    EXPECT_TRUE(mWindow->SetSize({300, 200}));
    EXPECT_EQ(Size(), (WindowSize{300, 200}));
    EXPECT_EQ(mClient->GetFixedSize(Handle()), (WindowSize{300, 200}));
    for (WindowSize const impossible : {WindowSize{0, 10}, {10, 0}, {-5, 10}, {10, 16385}})
        EXPECT_FALSE(mWindow->SetSize(impossible));
    EXPECT_EQ(Size(), (WindowSize{300, 200}));
    mClient->Resize(Handle(), {500, 500});
    EXPECT_EQ(Size(), (WindowSize{300, 200}));
    // Whoever insists isn't fought for ever.
    for (int i = 0; i < 10; ++i) {
        mClient->Resize(Handle(), {500, 500});
        mWindow->HandleEvents();
    }
    EXPECT_EQ(Size(), (WindowSize{500, 500}));
    EXPECT_TRUE(mWindow->SetSize({301, 200}));
    EXPECT_EQ(Size(), (WindowSize{301, 200}));
}

TEST_F(EditWindowTest, WindowFollowsTheSizeThatTheEditorTellsAsLongAsItHoldsIt) {
    mEditor->onOpen = [&] {
        EXPECT_EQ(mClient->GetSize(Handle()), (WindowSize{320, 200})) << "before the editor opens";
        mEditor->bounds = {10, 20, 410, 320};
    };
    EditFrame& frame = Open();
    EXPECT_EQ(Size(), (WindowSize{400, 300})) << "known only once it is open";
    mEditor->Ask(500, 100);
    EXPECT_EQ(mClient->GetSize(Handle()), (WindowSize{500, 100})) << "before the plug-in's call returns";
    std::thread([&] { mEditor->Ask(200, 100); }).join();
    EXPECT_EQ(Size(), (WindowSize{500, 100}));
    frame.Follow();
    EXPECT_EQ(Size(), (WindowSize{200, 100})) << "asked for on another thread";
    mEditor->bounds = {0, 0, 250, 150};
    mEditor->client.Resize(mEditor->child, {250, 150});
    mWindow->HandleEvents();
    frame.Follow();
    EXPECT_EQ(Size(), (WindowSize{250, 150})) << "told by the plug-in's own window alone";
    mFrame.reset();
    EXPECT_FALSE(mEditor->IsOpen());
    EXPECT_TRUE(mFilter->returned);
    mEditor->Ask(90, 90);
    EXPECT_EQ(Size(), (WindowSize{250, 150}));
    mEditor->onOpen = nullptr;
    mEditor->opens = false;
    Open();
}

TEST_F(EditWindowTest, SizeThatNoWindowHasLeavesTheWindowOrTakesThatOfThePluginsOwn) {
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    mEditor->bounds = {};
    mEditor->content = {};
    EditFrame& frame = Open();
    EXPECT_EQ(Size(), (WindowSize{640, 480}));
    for (auto const& absurd : {vyncore::geom::RectT<int>{kLeast, kLeast, kMost, kMost},
                               {100, 100, 50, 50},
                               {0, 0, 20000, 10},
                               {0, 0, 10, 0}}) {
        mEditor->bounds = absurd;
        mEditor->GetContentSizeChangedSignal()();
        EXPECT_EQ(Size(), (WindowSize{640, 480}));
    }
    EXPECT_EQ(mWindow->GetContentSize(), std::nullopt);
    auto const child = mEditor->client.MakeChild(Handle(), {222, 111}, 0);
    mWindow->HandleEvents();
    frame.Follow();
    EXPECT_EQ(Size(), (WindowSize{222, 111}));
    mEditor->client.Destroy(child);
    mWindow->HandleEvents();
    frame.Follow();
    EXPECT_EQ(mWindow->GetContentSize(), std::nullopt);
    EXPECT_EQ(Size(), (WindowSize{222, 111}));
}

TEST_F(EditWindowTest, OfSeveralWindowsInsideTheLargestCounts) {
    Open();
    auto const tip = mEditor->client.MakeChild(Handle(), {20, 10}, 0);
    mWindow->HandleEvents();
    EXPECT_EQ(mWindow->GetContentSize(), (WindowSize{320, 200}));
    mEditor->client.Resize(tip, {400, 300});
    mWindow->HandleEvents();
    EXPECT_EQ(mWindow->GetContentSize(), (WindowSize{400, 300}));
    mEditor->client.Destroy(tip);
    mWindow->HandleEvents();
    EXPECT_EQ(mWindow->GetContentSize(), (WindowSize{320, 200}));
}

TEST_F(EditWindowTest, ConnectionOfThePluginsThatBreaksEndsTheLoop) {
    EditFrame& frame = Open();
    mEachTurn = [&] { mEditor->client.Break(); };
    EXPECT_EQ(RunLoop(frame), EditEnd::kDisplayLost);
    EXPECT_EQ(mForeignLosses, 1);
    EXPECT_EQ(mTurns, 1);
    EXPECT_FALSE(mWindow->IsLost());
}

TEST_F(EditWindowTest, LoopEndsWithTheWindowAnInterruptOrTheTime) {
    EditFrame& frame = Open();
    bool called = false;
    vyncore::threads::AsyncCallFromMainThread([&] { called = true; }, 1);
    EXPECT_EQ(RunLoop(frame, os::GetMonotonicNanos() + kSecondNanos), EditEnd::kTimeUp);
    EXPECT_TRUE(called);
    EXPECT_GT(mEditor->idleCalls, 10);
    EXPECT_LT(mEditor->idleCalls, 40);
    EXPECT_LT(mTurns, 100) << "it waits in between";

    mEachTurn = [] { std::raise(SIGINT); };
    EXPECT_EQ(RunLoop(frame), EditEnd::kInterrupted);
    mEachTurn = [this] { mClient->SendClose(Handle()); };
    EXPECT_EQ(RunLoop(frame), EditEnd::kWindowClosed);
}

TEST_F(EditWindowTest, WindowThatSomebodyDestroysIsClosed) {
    mEachTurn = [this] { mClient->Destroy(Handle()); };
    EXPECT_EQ(RunLoop(Open()), EditEnd::kWindowClosed);
    EXPECT_EQ(mWindow->TakeScreenshot(), std::nullopt);
}

TEST_F(EditWindowTest, RequestsThatAreRefusedAreCountedAndTheFirstIsTold) {
    EditFrame& frame = Open();
    EXPECT_EQ(mErrors->TakeFirst(), "");
    mEditor->client.Err();
    mEditor->client.Err();
    EXPECT_EQ(mErrors->GetCount(), 2);
    EXPECT_EQ(mErrors->TakeFirst().substr(0, 9), "BadWindow");
    EXPECT_EQ(mErrors->TakeFirst(), "");
    // A plug-in that puts the library's own handling back.
    mEditor->onIdle = [&] { EditXClient::ForgetHandlers(); };
    RunLoop(frame, os::GetMonotonicNanos() + kSecondNanos / 10);
    mErrors->Reclaim();
    mEditor->client.Err();
    EXPECT_EQ(mErrors->GetCount(), 3);
}

TEST_F(EditWindowTest, DisplayThatGoesAwayEndsTheLoopAndNoMoreOfThePluginRuns) {
    EditFrame& frame = Open();
    int idleCalls = 0;
    mEachTurn = [&] {
        idleCalls = mEditor->idleCalls;
        mDisplay.Kill();
    };
    EXPECT_EQ(RunLoop(frame), EditEnd::kDisplayLost);
    EXPECT_EQ(mEditor->idleCalls, idleCalls);
    EXPECT_TRUE(mWindow->IsLost());
    EXPECT_EQ(mWindow->TakeScreenshot(), std::nullopt);
    EXPECT_EQ(mForeignLosses, 0);
    mEditor->client.Err();
    EXPECT_EQ(mForeignLosses, 1);
}

TEST_F(EditWindowTest, PictureHoldsWhatThePluginShowsAndBlackBeyondTheScreen) {
    mEditor->bounds = {0, 0, 1300, 40};
    mEditor->content = {1300, 20};
    Open();
    mWindow->HandleEvents();
    auto picture = mWindow->TakeScreenshot();
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->width, 1300);
    ASSERT_EQ(picture->height, 40);
    auto const at = [&](int x, int y) {
        unsigned char const* const rgb = picture->At(x, y);
        return rgb[0] << 16 | rgb[1] << 8 | rgb[2];
    };
    EXPECT_EQ(at(0, 0), 0x4080C0);
    EXPECT_EQ(at(1279, 19), 0x4080C0);
    EXPECT_EQ(at(1279, 20), 0);
    EXPECT_EQ(at(1280, 0), 0);

    TemporaryFolder const folder;
    std::string const path = folder.Path() / "a.png";
    WritePNGFile(path, *picture);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str()));
    image.format = PNG_FORMAT_RGB;
    ASSERT_EQ(PNG_IMAGE_SIZE(image), picture->rgb.size());
    std::vector<unsigned char> read(picture->rgb.size());
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, read.data(), 0, nullptr));
    EXPECT_EQ(read, picture->rgb);
}

} // namespace
