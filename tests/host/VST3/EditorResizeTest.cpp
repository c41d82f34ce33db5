#include "EditorFixture.h"

#include <stdexcept>

namespace {

using namespace vyntest;
using Steinberg::kResultFalse;
using Steinberg::kResultOk;
using Steinberg::ViewRect;

using VST3EditorResizeTest = VST3EditorFixture;

TEST_F(VST3EditorResizeTest, EmptyRectangleIsRefusedAndChangesNothing) {
    Make({});
    int fired = 0;
    editor->GetContentSizeChangedSignal().connect([&fired] { ++fired; });
    for (ViewRect const& rect : {ViewRect(), ViewRect(5, 0, 5, 10), ViewRect(0, 5, 10, 5)})
        EXPECT_EQ(Resize(rect), kResultFalse);
    EXPECT_EQ(Frame().resizeView(nullptr, nullptr), kResultFalse);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(editor->GetEditorBounds(), Bounds());
    // Without a view that could be asked, the last that was accepted stays.
    EXPECT_EQ(Resize({1, 2, 301, 202}), kResultOk);
    EXPECT_EQ(Resize({}), kResultFalse);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(editor->GetEditorBounds(), (Bounds{1, 2, 301, 202}));
}

TEST_F(VST3EditorResizeTest, ListenerOfAResizeReadsTheSizeThatTheViewAsksFor) {
    Make(PluginWithView({.resizeInAttached = {0, 0, 640, 480}}));
    std::vector<Bounds> heard;
    editor->GetContentSizeChangedSignal().connect([&] { heard.push_back(editor->GetEditorBounds()); });
    editor->OpenEditor(&window);
    EXPECT_THAT(heard, ElementsAre(Bounds{0, 0, 640, 480}));
    EXPECT_THAT(TakeTexts(),
                ElementsAre("View.attached(X11EmbedWindowID)", "View.onSize(0 0 640 480)", "View.host:resizeView(0)"));
    EXPECT_EQ(editor->GetEditorBounds(), (Bounds{0, 0, 640, 480}));
    EXPECT_THAT(TakeTexts(), ElementsAre("View.getSize()")) << "behind the resize the view is asked again";
}

TEST_F(VST3EditorResizeTest, ResizeInsideAResizeLeavesTheOuterOneUnderWay) {
    MakeOpen(PluginWithView());
    std::vector<Bounds> heard;
    auto& frame = Frame();
    frame.GetContentSizeChangedSignal().connect([&] {
        heard.push_back(frame.GetEditorBounds());
        if (heard.size() == 1) {
            EXPECT_EQ(Resize({0, 0, 50, 40}), kResultOk);
            heard.push_back(frame.GetEditorBounds());
        }
    });
    EXPECT_EQ(Resize({0, 0, 700, 500}), kResultOk);
    EXPECT_THAT(heard, ElementsAre(Bounds{0, 0, 700, 500}, Bounds{0, 0, 50, 40}, Bounds{0, 0, 50, 40}));
    EXPECT_THAT(TakeTexts(), IsEmpty()) << "no getSize while one is under way";
    EXPECT_EQ(editor->GetEditorBounds(), (Bounds{0, 0, 400, 300}));
}

TEST_F(VST3EditorResizeTest, ViewThatAsksAgainWheneverItIsSizedComesToAnEnd) {
    for (int const resizes : {1, -1}) {
        Make(PluginWithView(
            {.resizeInAttached = {0, 0, 640, 480}, .resizeInOnSize = {0, 0, 200, 100}, .resizesInOnSize = resizes}));
        std::vector<Bounds> heard;
        editor->GetContentSizeChangedSignal().connect([&] { heard.push_back(editor->GetEditorBounds()); });
        editor->OpenEditor(&window);
        EXPECT_TRUE(editor->IsOpen());
        ASSERT_GE(heard.size(), 2u);
        EXPECT_LE(heard.size(), resizes == 1 ? 2u : 64u);
        EXPECT_EQ(heard[0], (Bounds{0, 0, 640, 480}));
        EXPECT_EQ(heard[1], (Bounds{0, 0, 200, 100}));
        EXPECT_EQ(fixture->CountCalls("getSize"), 0);
        EXPECT_EQ(editor->GetEditorBounds(), (Bounds{0, 0, 200, 100}));
        EXPECT_EQ(fixture->CountCalls("getSize"), 1) << "every resize has ended";
    }
}

TEST_F(VST3EditorResizeTest, ListenerThatThrowsEndsNoResizeForTheView) {
    MakeOpen(PluginWithView());
    int fired = 0;
    boost::signals2::scoped_connection throwing = editor->GetContentSizeChangedSignal().connect([&fired] {
        ++fired;
        throw std::runtime_error("from a listener");
    });
    EXPECT_EQ(Resize({0, 0, 640, 480}), kResultOk);
    EXPECT_EQ(fired, 1);
    editor->GetEditorBounds();
    EXPECT_THAT(TakeTexts(), ElementsAre("View.getSize()")) << "none is under way any more";
}

TEST_F(VST3EditorResizeTest, ListenerMayLetGoOfTheEditorInsideAResize) {
    for (bool const held : {true, false}) {
        MakeOpen(PluginWithView());
        VST3AudioFilterEditor& frame = Frame();
        boost::intrusive_ptr<AudioFilterEditor> const longer = held ? editor : nullptr;
        editor->GetContentSizeChangedSignal().connect([this] { filter->DestroyCustomEditor(std::move(editor)); });
        ViewRect rect(0, 0, 640, 480);
        EXPECT_EQ(frame.resizeView(nullptr, &rect), kResultOk);
        EXPECT_EQ(TakeTexts(),
                  (Texts{"View.removed()", "Controller.releaseVendor()", "View.setFrame(0)", "View.destroyed()"}));
        editor = filter->CreateCustomEditor();
        EXPECT_NE(editor, longer);
    }
}

} // namespace
