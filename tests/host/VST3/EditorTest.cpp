#include "EditorFixture.h"

#include "support/CallLoop.h"

#include <climits>

namespace {

using namespace vyntest;
using Steinberg::IPlugFrame;
using Steinberg::kInvalidArgument;
using Steinberg::kResultOk;

class VST3EditorTest : public VST3EditorFixture {
protected:
    IVST3TolveVendorSpecificHost& VendorHost() {
        void* found = nullptr;
        static_cast<Steinberg::Vst::IHostApplication&>(*filter).queryInterface(IVST3TolveVendorSpecificHost::iid,
                                                                               &found);
        return *static_cast<IVST3TolveVendorSpecificHost*>(found);
    }
};

TEST_F(VST3EditorTest, ViewIsFramedAttachedRemovedAndReleasedInThisOrder) {
    Open(PluginWithView());
    fixture->ClearCalls();
    EXPECT_TRUE(filter->HasCustomEditor());
    EXPECT_EQ(TakeTexts(), (Texts{"Controller.createView(editor)", "View.created()", "View.destroyed()"}));

    editor = filter->CreateCustomEditor();
    EXPECT_EQ(TakeTexts(),
              (Texts{"Controller.createView(editor)", "View.created()",
                     "Controller.queryInterface(3C8A2F25-1411-4BF7-851B-13CB9C55AC92)", "View.setFrame(1)"}));
    EXPECT_EQ(filter->CreateCustomEditor(), editor);
    EXPECT_TRUE(filter->HasCustomEditor());
    EXPECT_TRUE(editor->IsEditorAvailable());
    editor->CloseEditor();
    editor->EditorIdle();
    EXPECT_THAT(TakeTexts(), IsEmpty()) << "all there already, and nothing open";

    for (int turn = 0; turn < 2; ++turn) {
        editor->OpenEditor(&window);
        EXPECT_TRUE(editor->IsOpen());
        EXPECT_EQ(fixture->Calls().front().extra[0], reinterpret_cast<std::intptr_t>(&window));
        EXPECT_THAT(TakeTexts(), ElementsAre("View.attached(X11EmbedWindowID)"));
        editor->OpenEditor(&window);
        EXPECT_THAT(TakeTexts(), IsEmpty()) << "a view has one window";
        editor->CloseEditor();
        editor->CloseEditor();
        EXPECT_FALSE(editor->IsOpen());
        EXPECT_THAT(TakeTexts(), ElementsAre("View.removed()"));
    }

    filter->DestroyCustomEditor(std::move(editor));
    EXPECT_EQ(TakeTexts(), (Texts{"Controller.releaseVendor()", "View.setFrame(0)", "View.destroyed()"}));
    editor = filter->CreateCustomEditor();
    EXPECT_EQ(fixture->CountCalls("createView"), 1) << "the next one has a view of its own";
}

TEST_F(VST3EditorTest, OnlyTheFiltersOwnEditorIsDestroyed) {
    Make(PluginWithView());
    boost::intrusive_ptr<VST3AudioFilter> const own = filter;
    auto const module = FindOrLoadVST3Module(FixturePath16("configurable.vst3"));
    auto const other = module->CreateVST3Filter(fixture->UniqueID());
    auto const foreign = other->CreateCustomEditor();
    fixture->ClearCalls();
    own->DestroyCustomEditor(foreign);
    own->DestroyCustomEditor(nullptr);
    EXPECT_THAT(TakeTexts(), IsEmpty());
    EXPECT_EQ(own->CreateCustomEditor(), editor);
    EXPECT_EQ(other->CreateCustomEditor(), foreign);
}

TEST_F(VST3EditorTest, PluginWithoutAViewHasAnEditorThatDoesNothing) {
    FixtureConfiguration throws = PluginWithView();
    for (FixtureConfiguration const& configuration :
         {FixtureConfiguration(), throws.ThrowIn("Controller.createView")}) {
        Make(configuration);
        EXPECT_FALSE(filter->HasCustomEditor());
        EXPECT_FALSE(Frame().HasView());
        fixture->ClearCalls();
        editor->OpenEditor(&window);
        EXPECT_FALSE(editor->IsOpen());
        EXPECT_TRUE(editor->IsEditorAvailable());
        EXPECT_EQ(editor->GetEditorBounds(), Bounds());
        editor->CloseEditor();
        EXPECT_THAT(fixture->CallTexts(), IsEmpty());
    }
}

TEST_F(VST3EditorTest, ViewThatRefusesItsWindowIsNotRemovedFromIt) {
    FixtureConfiguration throws = PluginWithView();
    for (FixtureConfiguration const& configuration :
         {PluginWithView({.attachedFails = true}), throws.ThrowIn("View.attached")}) {
        Make(configuration);
        for (int turn = 0; turn < 2; ++turn) {
            editor->OpenEditor(&window);
            EXPECT_FALSE(editor->IsOpen());
            editor->CloseEditor();
        }
        EXPECT_THAT(TakeTexts(), ElementsAre("View.attached(X11EmbedWindowID)", "View.attached(X11EmbedWindowID)"));
    }
}

TEST_F(VST3EditorTest, BoundsAreTheViewsWithinWhatAWindowCanHave) {
    struct Case {
        FixtureRect said;
        Bounds read;
    };
    for (Case const& row :
         {Case{{0, 0, 400, 300}, {0, 0, 400, 300}}, Case{{-5, 7, 395, 307}, {-5, 7, 395, 307}}, Case{{0, 0, 0, 0}, {}},
          Case{{0, 0, -1, 300}, {0, 0, 0, 300}}, Case{{INT_MIN, 3, INT_MAX, INT_MAX}, {INT_MIN, 3, INT_MIN, 3}}}) {
        MakeOpen(PluginWithView({.size = row.said}));
        EXPECT_EQ(editor->GetEditorBounds(), row.read);
        EXPECT_THAT(TakeTexts(), ElementsAre("View.getSize()"));
    }
    MakeOpen(PluginWithView({.sizeFails = true}));
    EXPECT_EQ(editor->GetEditorBounds(), Bounds());
}

TEST_F(VST3EditorTest, NothingThatIsThrownCrossesTheEditor) {
    for (char const* const call : {"View.setFrame", "View.attached", "View.removed", "View.getSize", "View.onSize",
                                   "Controller.SetBrightness", "Controller.SetBrightnessFlag", "Controller.GainFocus",
                                   "Controller.SetCurrentFocus", "Controller.releaseVendor"}) {
        FixtureConfiguration configuration = PluginWithView();
        configuration.view.resizeInAttached = {0, 0, 640, 480};
        Make(configuration.ThrowIn(call));
        editor->OpenEditor(&window);
        EXPECT_NO_THROW(editor->GetEditorBounds()) << call;
        editor->SetBrightness(1.0f, true);
        EXPECT_FALSE(editor->GainFocus(true));
        EXPECT_FALSE(editor->SetCurrentFocus());
        EXPECT_EQ(fixture->CountCalls("SetBrightnessFlag"), 1) << call;
        editor->CloseEditor();
        EXPECT_FALSE(editor->IsOpen());
        filter->DestroyCustomEditor(std::move(editor));
    }
}

TEST_F(VST3EditorTest, FrameIsAFrameAndARunLoopAndNothingElse) {
    Make(PluginWithView());
    VST3AudioFilterEditor& frame = Frame();
    for (Steinberg::FUID const& id : {Steinberg::FUnknown::iid, IPlugFrame::iid}) {
        void* found = nullptr;
        EXPECT_EQ(frame.queryInterface(id, &found), kResultOk);
        EXPECT_EQ(found, static_cast<IPlugFrame*>(&frame));
    }
    void* found = nullptr;
    EXPECT_EQ(frame.queryInterface(Steinberg::Linux::IRunLoop::iid, &found), kResultOk);
    EXPECT_NE(found, nullptr);
    EXPECT_EQ(frame.queryInterface(Steinberg::Vst::IComponentHandler::iid, &found), Steinberg::kNoInterface);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(frame.queryInterface(IPlugFrame::iid, nullptr), kInvalidArgument);
    EXPECT_EQ(frame.addRef(), 1u);
    EXPECT_EQ(frame.release(), 1u);
    EXPECT_EQ(frame.release(), 1u) << "its life is the editor's";
    EXPECT_NE(fixture->Snapshot().componentHostAnswers & kRunLoop, 0u);
    EXPECT_NE(fixture->Snapshot().controllerHostAnswers & kRunLoop, 0u);
}

TEST_F(VST3EditorTest, EditorThatIsLeftOpenIsClosedBeforeItGoes) {
    Texts const ended{"View.removed()", "Controller.releaseVendor()", "View.setFrame(0)", "View.destroyed()"};
    MakeOpen(PluginWithView());
    filter->DestroyCustomEditor(std::move(editor));
    EXPECT_EQ(TakeTexts(), ended);

    MakeOpen(PluginWithView());
    editor.reset();
    filter.reset();
    Texts const all = fixture->CallTexts({"removed", "setFrame", "destroyed", "terminate", "setComponentHandler"});
    ASSERT_GE(all.size(), 5u);
    EXPECT_EQ(Texts(all.begin(), all.begin() + 5),
              (Texts{"View.removed()", "View.setFrame(0)", "View.destroyed()", "Controller.setComponentHandler(0)",
                     "Controller.terminate()"}));
}

TEST_F(VST3EditorTest, EditorThatIsHeldLongerThanItsPluginDoesNothing) {
    for (bool const destroyed : {false, true}) {
        FixtureConfiguration configuration = PluginWithView();
        configuration.vendorFocus = 1;
        MakeOpen(configuration);
        if (destroyed)
            filter->DestroyCustomEditor(editor);
        filter.reset();
        EXPECT_EQ((*fixture)->liveObjects(), 0) << "the view doesn't outlive its controller";
        EXPECT_EQ(fixture->CountCalls("removed"), 1);
        ExpectNothingOf(*editor);
        editor.reset();
        EXPECT_THAT(TakeTexts(), IsEmpty());
    }
}

TEST_F(VST3EditorTest, BrightnessAndFocusGoToTheVendorsController) {
    for (int const answer : {0, 1, -7}) {
        FixtureConfiguration configuration = PluginWithView();
        configuration.vendorFocus = answer;
        Make(configuration);
        editor->SetBrightness(0.25f, true);
        EXPECT_EQ(fixture->Calls().front().value, 0.25);
        EXPECT_THAT(TakeTexts(), ElementsAre("Controller.SetBrightness(1)", "Controller.SetBrightnessFlag(1)"));
        editor->SetBrightness(1.0f, false);
        EXPECT_THAT(TakeTexts(), ElementsAre("Controller.SetBrightness(0)", "Controller.SetBrightnessFlag(0)"));
        EXPECT_EQ(editor->GainFocus(true), answer != 0);
        EXPECT_EQ(editor->GainFocus(false), answer != 0);
        EXPECT_EQ(editor->SetCurrentFocus(), answer != 0);
        EXPECT_THAT(TakeTexts(),
                    ElementsAre("Controller.GainFocus(1)", "Controller.GainFocus(0)", "Controller.SetCurrentFocus()"));
    }
    Make(PluginWithView(FixtureViewConfiguration()));
    editor->SetBrightness(0.25f, true);
    EXPECT_FALSE(editor->GainFocus(true));
    EXPECT_FALSE(editor->SetCurrentFocus());
    EXPECT_THAT(TakeTexts(), IsEmpty()) << "there is no vendor's controller";
}

TEST_F(VST3EditorTest, FocusThatThePluginGivesBackReachesTheListenersOfItsEditor) {
    Open(PluginWithView());
    VendorHost().OnAdvanceFocus(1);
    editor = filter->CreateCustomEditor();
    std::vector<bool> heard;
    editor->GetAdvanceFocusSignal().connect([&heard](bool forward) { heard.push_back(forward); });
    for (int const direction : {1, 0, 2, -1})
        VendorHost().OnAdvanceFocus(direction);
    EXPECT_EQ(heard, (std::vector<bool>{true, false, false, false}));
    filter->DestroyCustomEditor(editor);
    VendorHost().OnAdvanceFocus(1);
    EXPECT_EQ(heard.size(), 4u) << "the filter has no editor any more";
}

TEST_F(VST3EditorTest, AttachedViewIsCalledForItsTimerAndItsDescriptorUntilItIsRemoved) {
    Make(PluginWithView({.usesRunLoop = true}));
    editor->OpenEditor(&window);
    EXPECT_TRUE(editor->IsOpen());
    EXPECT_THAT(TakeTexts(), ElementsAre("View.attached(X11EmbedWindowID)", "View.host:registerTimer(0)",
                                         "View.host:registerEventHandler(0)"));
    EXPECT_TRUE(
        RunCallsUntil([this] { return fixture->CountCalls("onTimer") >= 3 && fixture->CountCalls("onFDIsSet") >= 1; }));
    EXPECT_THAT(fixture->CallTexts({"onFDIsSet"}), ElementsAre("View.onFDIsSet(1)")) << "there was one byte";
    fixture->ClearCalls();
    editor->CloseEditor();
    RunCallsFor(5);
    EXPECT_THAT(TakeTexts(),
                ElementsAre("View.removed()", "View.host:unregisterTimer(0)", "View.host:unregisterEventHandler(0)"));
}

TEST_F(VST3EditorTest, HandlersThatAPluginLeavesAreNotCalledOnceItsFilterHasGone) {
    for (bool const held : {false, true}) {
        MakeOpen(PluginWithView({.usesRunLoop = true, .readsPipe = false, .leavesHandlers = true}));
        EXPECT_TRUE(RunCallsUntil([this] { return fixture->CountCalls("onTimer") >= 1; }));
        boost::intrusive_ptr<AudioFilterEditor> const longer = held ? editor : nullptr;
        editor.reset();
        filter.reset();
        fixture->ClearCalls();
        RunCallsFor(5);
        EXPECT_THAT(TakeTexts(), IsEmpty());
    }
}

} // namespace
