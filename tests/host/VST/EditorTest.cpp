#include "FilterFixture.h"

#include "support/CallLoop.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vynaudiofilterhost/VST/src/AEffect.h"
#include "vyncore/debug/DebugDatabase.h"
#include "vyncore/debug/DebugMonitor.h"
#include "vyncore/strings/StringUtils.h"

#include <atomic>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

using namespace vyntest;
using vyncore::geom::RectT;

using Bounds = RectT<int>;

VSTFixtureConfiguration EffectWithEditor() {
    VSTFixtureConfiguration configuration;
    configuration.flags |= effFlagsHasEditor;
    return configuration;
}

VSTFixtureConfiguration EffectThatSizesItself(std::int32_t width, std::intptr_t height) {
    VSTFixtureConfiguration configuration = EffectWithEditor();
    return configuration.AddHostCall(
        {.during = effEditOpen, .opcode = audioMasterSizeWindow, .index = width, .value = height});
}

/// The filters that the timer ticks for.
int CountTicking() {
    std::string const text = vyncore::string::UTF16to8(vyncore::debug::RenderDebugMonitors());
    auto const end = text.find(" connection");
    auto const start = end == std::string::npos ? end : text.rfind(' ', end - 1);
    return start == std::string::npos ? 0 : std::atoi(text.c_str() + start);
}

class VSTEditorTest : public VSTFilterTest {
protected:
    ~VSTEditorTest() override { editor.reset(); }

    void Make(VSTFixtureConfiguration const& configuration) {
        editor.reset();
        Open(configuration);
        ASSERT_TRUE(filter);
        editor = filter->CreateCustomEditor();
        ASSERT_TRUE(editor);
        fixture->ClearCalls();
    }

    void MakeOpen(VSTFixtureConfiguration const& configuration) {
        Make(configuration);
        editor->OpenEditor(&window);
    }

    std::intptr_t CanSizeWindow() {
        std::string question = "SizeWindow";
        return fixture->CallHost(audioMasterCanDo, 0, 0, question.data());
    }

    int window = 0; ///< its address stands for a window
    boost::intrusive_ptr<AudioFilterEditor> editor;
};

TEST_F(VSTEditorTest, EditorIsOpenedIdledAndClosedOnceEach) {
    Make(EffectWithEditor());
    EXPECT_TRUE(filter->HasCustomEditor());
    EXPECT_EQ(filter->CreateCustomEditor(), editor);
    EXPECT_TRUE(editor->IsEditorAvailable());
    editor->CloseEditor();
    EXPECT_THAT(fixture->TakeNames(), IsEmpty()) << "it wasn't open";
    int const ticking = CountTicking();
    for (int turn = 0; turn < 2; ++turn) {
        editor->OpenEditor(&window);
        EXPECT_TRUE(editor->IsOpen());
        EXPECT_EQ(fixture->Calls().front().pointer, &window);
        editor->OpenEditor(&window);
        EXPECT_EQ(CountTicking(), ticking + 1) << "the filter ticks for as long as its editor is open";
        editor->EditorIdle();
        editor->CloseEditor();
        EXPECT_FALSE(editor->IsOpen());
        editor->CloseEditor();
        EXPECT_EQ(CountTicking(), ticking);
        EXPECT_THAT(fixture->TakeNames(), ElementsAre("effEditOpen", "effEditIdle", "effEditClose"));
    }
    filter->DestroyCustomEditor(editor);
    EXPECT_THAT(fixture->TakeNames(), IsEmpty());
    EXPECT_NE(filter->CreateCustomEditor(), editor);
}

TEST_F(VSTEditorTest, EditorsAreThoseOfTheFlagUnlessASwitchHidesThem) {
    Open({});
    EXPECT_FALSE(filter->HasCustomEditor());
    EXPECT_FALSE(filter->CreateCustomEditor());
    filter->DestroyCustomEditor(nullptr);
    auto& switches = vyncore::debug::DebugDatabase::Instance();
    Open(EffectWithEditor());
    switches.SetEntry("DisableVSTCustomUI", "true");
    EXPECT_FALSE(filter->HasCustomEditor());
    EXPECT_TRUE(filter->CreateCustomEditor());
    switches.SetEntry("DisableVSTCustomUI", "no");
    EXPECT_TRUE(filter->HasCustomEditor());
    switches.RemoveEntry("DisableVSTCustomUI");
}

TEST_F(VSTEditorTest, BoundsAreTheEffectsOwnUntilItAsksForASize) {
    VSTFixtureConfiguration configuration = EffectWithEditor();
    configuration.editor.rect = {.top = -3, .left = 5, .bottom = 297, .right = 405};
    configuration.editor.rectWhenOpen = true;
    Make(configuration);
    EXPECT_EQ(editor->GetEditorBounds(), Bounds()) << "the pointer stays null";
    editor->OpenEditor(&window);
    EXPECT_EQ(editor->GetEditorBounds(), (Bounds{5, -3, 405, 297}));

    struct Case {
        std::int32_t width;
        std::intptr_t height;
        Bounds read;
    };
    Bounds const own{5, -3, 405, 297};
    int fired = 0;
    editor->GetContentSizeChangedSignal().connect([&fired] { ++fired; });
    for (Case const& row :
         {Case{400, 300, {0, 0, 400, 300}}, Case{0, 300, own}, Case{400, 0, own}, Case{-400, 300, own},
          Case{400, -1, own}, Case{1, 1, {0, 0, 1, 1}}, Case{400, std::intptr_t{1} << 32, {0, 0, 400, INT_MAX}}}) {
        int const before = fired;
        EXPECT_EQ(fixture->CallHost(audioMasterSizeWindow, row.width, row.height), 1);
        EXPECT_EQ(fired, before + 1);
        fixture->ClearCalls();
        EXPECT_EQ(editor->GetEditorBounds(), row.read) << row.width << ' ' << row.height;
        EXPECT_EQ(fixture->CountCalls(effEditGetRect), row.read == own ? 1 : 0);
    }
}

TEST_F(VSTEditorTest, SizeThatIsAskedForInsideTheOpeningReachesTheListener) {
    VSTFixtureConfiguration configuration = EffectThatSizesItself(400, 300);
    configuration.editor.hasRect = false;
    Make(configuration);
    EXPECT_EQ(editor->GetEditorBounds(), Bounds());
    std::vector<Bounds> heard;
    editor->GetContentSizeChangedSignal().connect([&] { heard.push_back(editor->GetEditorBounds()); });
    editor->OpenEditor(&window);
    EXPECT_THAT(fixture->Answers(audioMasterSizeWindow), ElementsAre(1));
    EXPECT_THAT(heard, ElementsAre(Bounds{0, 0, 400, 300}));
    editor->CloseEditor();
    EXPECT_EQ(editor->GetEditorBounds(), (Bounds{0, 0, 400, 300})) << "it stays when the editor closes";
    EXPECT_EQ(fixture->CountCalls(effEditGetRect), 1);
    EXPECT_EQ(fixture->CallHost(audioMasterSizeWindow, 500, 400), 0);
    EXPECT_EQ(heard.size(), 1u) << "closed, it hears nothing";
}

TEST_F(VSTEditorTest, WindowCanBeSizedWhileTheEditorIsOpenAlone) {
    VSTFixtureConfiguration configuration = EffectWithEditor();
    for (std::int32_t const during : {effOpen + 0, effEditOpen + 0, effEditClose + 0, effClose + 0})
        configuration.AddHostCall({.during = during, .opcode = audioMasterCanDo, .text = "sizeWindow"});
    Open(configuration);
    EXPECT_THAT(fixture->Answers(audioMasterCanDo), ElementsAre(0));
    Make(configuration);
    EXPECT_EQ(CanSizeWindow(), 0);
    editor->OpenEditor(&window);
    EXPECT_EQ(CanSizeWindow(), 1);
    std::string question = "sizeWindows";
    EXPECT_EQ(fixture->CallHost(audioMasterCanDo, 0, 0, question.data()), 0);
    EXPECT_EQ(fixture->CallHost(audioMasterCanDo), 0) << "a question is owed";
    question = "shellCategory";
    EXPECT_EQ(fixture->CallHost(audioMasterCanDo, 0, 0, question.data()), 1) << "the rest is answered as ever";
    editor->CloseEditor();
    EXPECT_EQ(CanSizeWindow(), 0);
    filter.reset();
    EXPECT_THAT(fixture->Answers(audioMasterCanDo), ElementsAre(1, 1, 0));
}

TEST_F(VSTEditorTest, EditsAndTheVendorsCallsReachTheOpenEditorAndNobodyElse) {
    Make(EffectWithEditor());
    EXPECT_EQ(fixture->CallHost(audioMasterBeginEdit, 0), 0);
    EXPECT_FALSE(filter->IsEditing(0));
    editor->OpenEditor(&window);
    EXPECT_EQ(fixture->CallHost(audioMasterBeginEdit, 0), 1);
    EXPECT_TRUE(filter->IsEditing(0));
    EXPECT_EQ(fixture->CallHost(audioMasterEndEdit, 0), 1);
    EXPECT_FALSE(filter->IsEditing(0));
    for (std::int32_t const absurd : {1, INT_MAX, -1, INT_MIN}) {
        EXPECT_EQ(fixture->CallHost(audioMasterBeginEdit, absurd), 1);
        EXPECT_FALSE(filter->IsEditing(absurd)) << "it has one parameter";
        EXPECT_EQ(fixture->CallHost(audioMasterEndEdit, absurd), 1);
    }
    editor->CloseEditor();
    EXPECT_EQ(fixture->CallHost(audioMasterBeginEdit, 0), 0);
    EXPECT_EQ(fixture->CallHost(audioMasterEndEdit, 0), 0);
    constexpr std::int32_t kLanguage = 0x70400000;
    std::vector<bool> heard;
    editor->GetAdvanceFocusSignal().connect([&heard](bool forward) { heard.push_back(forward); });
    std::int32_t language = -1;
    EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, 0x70400003), 0);
    EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, kLanguage, 0, &language), 0x11005678);
    EXPECT_EQ(language, 0);
    editor->OpenEditor(&window);
    language = -1;
    for (std::int32_t const index : {0x70400003, 0x70400004, 0x70400005, 0, -1})
        EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, index), 1);
    EXPECT_EQ(heard, (std::vector<bool>{true, false}));
    EXPECT_EQ(fixture->CallHost(audioMasterVendorSpecific, kLanguage, 0, &language), 1);
    EXPECT_EQ(language, -1) << "the editor answers to all of them";
}

TEST_F(VSTEditorTest, BrightnessAndFocusTravelByTheVendorsOpcode) {
    struct Case {
        std::uint32_t index;
        std::int64_t value;
        float opt;
    };
    for (std::int64_t const answer : {0, 1, -1}) {
        VSTFixtureConfiguration configuration = EffectWithEditor();
        configuration.editor.vendorAnswer = answer;
        Make(configuration);
        editor->SetBrightness(0.25f, true);
        editor->SetBrightness(0.75f, false);
        EXPECT_EQ(editor->GainFocus(true), answer != 0);
        EXPECT_EQ(editor->GainFocus(false), answer != 0);
        EXPECT_EQ(editor->SetCurrentFocus(), answer != 0);
        std::vector<VSTFixtureCall> const calls = fixture->Calls();
        std::vector<Case> const sent{{0x80000009, 1, 0.25f},
                                     {0x80000009, 0, 0.75f},
                                     {0x8000000A, 0, 0.0f},
                                     {0x8000000B, 0, 0.0f},
                                     {0x8000000C, 0, 0.0f}};
        ASSERT_EQ(calls.size(), sent.size());
        for (std::size_t place = 0; place < sent.size(); ++place) {
            EXPECT_EQ(calls[place].opcode, effVendorSpecific);
            EXPECT_EQ(static_cast<std::uint32_t>(calls[place].index), sent[place].index);
            EXPECT_EQ(calls[place].value, sent[place].value);
            EXPECT_EQ(calls[place].opt, sent[place].opt);
        }
    }
}

TEST_F(VSTEditorTest, EditorIsClosedBeforeItGoesEvenInsideTheEffectsCall) {
    MakeOpen(EffectWithEditor());
    int const ticking = CountTicking();
    filter->DestroyCustomEditor(std::move(editor));
    EXPECT_THAT(fixture->TakeNames(), ElementsAre("effEditOpen", "effEditClose"));
    EXPECT_EQ(CountTicking(), ticking - 1);
    EXPECT_EQ(CanSizeWindow(), 0) << "it isn't asked any more";

    MakeOpen(EffectWithEditor());
    editor.reset();
    filter.reset();
    EXPECT_THAT(fixture->TakeNames(), ElementsAre("effEditOpen", "effEditClose", "effClose"));

    VSTFixtureConfiguration configuration = EffectWithEditor();
    configuration.AddHostCall({.during = effEditIdle, .opcode = audioMasterSizeWindow, .index = 10, .value = 20});
    MakeOpen(configuration);
    editor->GetContentSizeChangedSignal().connect([this] {
        editor->CloseEditor();
        filter->DestroyCustomEditor(editor);
    });
    boost::intrusive_ptr<AudioFilterEditor> const running = editor;
    running->EditorIdle();
    EXPECT_THAT(fixture->TakeNames(), ElementsAre("effEditOpen", "effEditIdle", "effEditClose"));
    EXPECT_EQ(CanSizeWindow(), 0);
}

TEST_F(VSTEditorTest, EditorThatIsHeldLongerThanItsFilterDoesNothing) {
    for (bool const destroyed : {false, true}) {
        VSTFixtureConfiguration configuration = EffectWithEditor();
        configuration.editor.vendorAnswer = 1;
        MakeOpen(configuration);
        if (destroyed)
            filter->DestroyCustomEditor(editor);
        filter.reset();
        EXPECT_EQ(fixture->TakeNames().back(), "effClose");
        ExpectNothingOf(*editor);
        editor.reset();
        EXPECT_THAT(fixture->TakeNames(), IsEmpty());
    }
}

TEST_F(VSTEditorTest, EffectThatThrowsIsOpenAndClosedAllTheSame) {
    for (std::int32_t const opcode :
         {effEditGetRect + 0, effEditOpen + 0, effEditClose + 0, effEditIdle + 0, effVendorSpecific + 0}) {
        VSTFixtureConfiguration configuration = EffectWithEditor();
        configuration.editor.openAnswer = 0;
        configuration.editor.vendorAnswer = 1;
        Make(configuration.ThrowIn(opcode));
        editor->OpenEditor(&window);
        EXPECT_TRUE(editor->IsOpen());
        EXPECT_EQ(editor->GetEditorBounds(), opcode == effEditGetRect ? Bounds() : (Bounds{0, 0, 400, 300}));
        editor->EditorIdle();
        EXPECT_EQ(editor->GainFocus(true), opcode != effVendorSpecific);
        editor->CloseEditor();
        EXPECT_FALSE(editor->IsOpen());
        EXPECT_EQ(CanSizeWindow(), 0);
    }
}

TEST_F(VSTEditorTest, EffectsThreadMayCallWhileTheEditorOpensAndCloses) {
    VSTFixtureConfiguration configuration = EffectWithEditor();
    configuration.ownThread = true;
    Make(configuration);
    std::atomic<int> fired{0};
    std::atomic<int> calls{0};
    std::atomic<bool> over{false};
    editor->GetContentSizeChangedSignal().connect([&fired] { ++fired; });
    std::thread effect([&] {
        while (!over) {
            EXPECT_THAT(fixture->CallHost(audioMasterSizeWindow, 400, 300), testing::AnyOf(0, 1));
            EXPECT_THAT(fixture->CallHost(audioMasterBeginEdit, 0), testing::AnyOf(0, 1));
            EXPECT_THAT(fixture->CallHost(audioMasterEndEdit, 0), testing::AnyOf(0, 1));
            EXPECT_THAT(fixture->CallHost(audioMasterVendorSpecific, 0x70400003), testing::AnyOf(0, 1));
            ++calls;
        }
    });
    for (int turn = 0; turn < 300 || calls < 100 || fired == 0; ++turn) {
        editor->OpenEditor(&window);
        editor->GetEditorBounds();
        std::this_thread::yield();
        editor->CloseEditor();
        int const before = fired;
        std::this_thread::yield();
        EXPECT_EQ(fired, before) << "no call is under way once it is closed";
    }
    filter->DestroyCustomEditor(std::move(editor));
    over = true;
    effect.join();
}

} // namespace
