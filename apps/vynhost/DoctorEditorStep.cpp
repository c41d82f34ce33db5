#include "vynhost/DoctorEditorStep.h"

#include "vynhost/CommandError.h"
#include "vynhost/DoctorReport.h"
#include "vynhost/EditFrame.h"
#include "vynhost/EditLoop.h"
#include "vynhost/EditorWindow.h"
#include "vynhost/ListText.h"
#include "vynhost/PluginSelection.h"
#include "vynhost/ProcessTraces.h"
#include "vynhost/XErrors.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vyncore/strings/StringUtils.h"

#include "os/Clock.h"
#include "os/InterruptDescriptor.h"
#include "os/Memory.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;
constexpr std::uint64_t kLook = kNanosPerSecond / 20;
constexpr std::uint64_t kPatience = 8 * kNanosPerSecond;
constexpr int kFewestTurns = 20; ///< before an editor counts as blank
constexpr std::uint64_t kGlance = kNanosPerSecond / 10;

bool HasSeveralColours(Screenshot const& picture) {
    for (std::size_t byte = 3; byte < picture.rgb.size(); ++byte) {
        if (picture.rgb[byte] != picture.rgb[byte - 3])
            return true;
    }
    return false;
}

/// What an opening has left behind.
struct Losses {
    static constexpr std::size_t kMuchMemory = std::size_t{16} << 20;

    std::string traces;
    std::size_t memory; ///< in bytes

    bool IsNone() const { return traces.empty() && memory < kMuchMemory; }
};

/// Openings of one filter's editor in one window.
class EditorTrial {
public:
    EditorTrial(AudioFilter& filter, XErrors& errors, DoctorStep& step, std::function<void()> const& stillAlive)
        : mFilter(filter), mErrors(errors), mStep(step), mStillAlive(stillAlive), mWindow(errors) {
        mWindow.SetTitle(vyncore::string::UTF16to8(filter.GetDisplayName()));
    }

    // The first opening loads what stays. The second may have been another's first.
    void Run() {
        OpenAndClose(kPatience);
        if (Losses const second = OpenAgain(); !second.IsNone())
            Tell(second, OpenAgain());
        if (std::string const refusal = mErrors.TakeFirst(); !refusal.empty())
            mStep.Misbehave("the display refused something that was asked of it: " + refusal);
    }

private:
    void OpenAndClose(std::uint64_t patience) {
        mStillAlive();
        auto editor = mFilter.CreateCustomEditor();
        if (!editor)
            throw CommandError::OfPlugin({}, "says that it has an editor, and makes none");
        EditFrame frame(mWindow, mFilter, std::move(editor));
        if (!frame.Open())
            throw CommandError::OfPlugin({}, "its editor refuses the window");
        EditLoop loop(mWindow, frame, mErrors, mInterrupt, [] {});
        bool const isFirst = patience == kPatience;
        std::uint64_t const end = os::GetMonotonicNanos() + patience;
        bool isDrawn = false;
        EditEnd ended = EditEnd::kTimeUp;
        // Large panels take long for each turn on a busy machine.
        for (int turn = 0; ended == EditEnd::kTimeUp && !(isFirst && isDrawn) &&
                           (os::GetMonotonicNanos() < end || (isFirst && turn < kFewestTurns));
             ++turn) {
            mStillAlive();
            ended = loop.Run(os::GetMonotonicNanos() + kLook);
            isDrawn = isFirst && IsDrawn();
        }
        if (ended == EditEnd::kDisplayLost)
            throw CommandError::OfPlugin({}, "the display has gone");
        if (isFirst && !isDrawn)
            mStep.Misbehave(mWindow.GetContentSize() ? "its editor stays blank"
                                                     : "its editor puts nothing into the window");
        frame.Close();
    }

    bool IsDrawn() {
        std::optional<Screenshot> const picture = mWindow.GetContentSize() ? mWindow.TakeScreenshot() : std::nullopt;
        return picture && HasSeveralColours(*picture);
    }

    Losses OpenAgain() {
        ProcessTraces const traces;
        std::size_t const memory = os::GetOwnMemory();
        OpenAndClose(kGlance);
        std::vector<std::string> const left = traces.List();
        std::size_t const now = os::GetOwnMemory();
        return {.traces = left.empty() ? "" : ListTexts(left), .memory = now > memory ? now - memory : 0};
    }

    void Tell(Losses const& second, Losses const& third) {
        if (!second.traces.empty() && !third.traces.empty())
            mStep.Misbehave("each opening of its editor leaves behind " + third.traces);
        if (std::size_t const memory = std::min(second.memory, third.memory); memory >= Losses::kMuchMemory)
            mStep.Misbehave("each opening of its editor costs " + std::to_string(memory >> 20) + " MiB");
    }

    AudioFilter& mFilter;
    XErrors& mErrors;
    DoctorStep& mStep;
    std::function<void()> const& mStillAlive;
    os::InterruptDescriptor const mInterrupt;
    EditorWindow mWindow;
};

} // namespace

void ExamineEditor(PluginSelection const& plugin, XErrors& errors, DoctorStep& step,
                   std::function<void()> const& stillAlive) {
    constexpr float kSampleRate = 48000.0f;
    constexpr int kBlockSize = 512;
    auto const filter = plugin.CreateFilter();
    filter->SetSampleRate(kSampleRate);
    filter->SetBlockSize(kBlockSize);
    if (!filter->HasCustomEditor())
        return step.Skip("has no editor");
    std::optional<EditorTrial> trial;
    try {
        trial.emplace(*filter, errors, step, stillAlive);
    } catch (CommandError const& error) {
        return step.Skip(error.what());
    }
    trial->Run();
}

} // namespace vynhost
