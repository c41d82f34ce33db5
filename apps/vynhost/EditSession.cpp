#include "vynhost/EditSession.h"

#include "vynhost/CommandError.h"
#include "vynhost/EditCommand.h"
#include "vynhost/EditFrame.h"
#include "vynhost/EditLoop.h"
#include "vynhost/EditRescue.h"
#include "vynhost/PluginCall.h"
#include "vynhost/PNGFile.h"
#include "vynhost/StateFile.h"
#include "vynhost/XErrors.h"

#include "vynaudiofilterhost/AudioFilter.h"
#include "vynaudiofilterhost/AudioFilterEditor.h"
#include "vyncore/strings/StringUtils.h"

#include "os/Clock.h"

#include <cmath>
#include <stdexcept>

namespace vynhost {

using vynaudiofilterhost::AudioFilter;

namespace {

// Of a plug-in that isn't heard; what it plays to sets its own.
constexpr float kSampleRate = 48000.0f;
constexpr int kBlockSize = 512;

constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;
constexpr std::uint64_t kBlankNanos = 2 * kNanosPerSecond;
constexpr std::uint64_t kSettleNanos = kNanosPerSecond / 10;

// In each direction; the picture and what is made of it take up to 400 MB then.
constexpr int kMostPicturePixels = 8192;

constexpr auto kRefused = ExitStatus::kPluginRefused;
constexpr auto kFailed = ExitStatus::kWorkFailed;

} // namespace

EditSession::EditSession(EditRequest const& request, os::InterruptDescriptor const& interrupt, EditRescue& rescue,
                         XErrors& errors)
    : mRequest(request),
      mInterrupt(interrupt),
      mRescue(rescue),
      mErrors(errors),
      mWindow(mErrors),
      mPlugin(CallPlugin(kRefused, request.modulePath,
                         [&] { return PluginSelection(request.modulePath, request.classID); })),
      mFilter(CallPlugin(kRefused, request.modulePath, [&] { return MakeFilter(); })),
      mReport(*mFilter, request.json) {
    if (request.saveStatePath)
        mRescue.Keep(&mSavedState.emplace(*mFilter, *request.saveStatePath));
}

EditSession::~EditSession() {
    mRescue.Keep(nullptr);
}

void EditSession::Run() {
    CallPlugin(kRefused, mRequest.modulePath, [this] { Prepare(); });
    EditEnd end = EditEnd::kWindowClosed;
    try {
        end = CallPlugin(kFailed, mRequest.modulePath, [this] { return ShowEditor(); });
    } catch (CommandError const&) {
        SaveAfterFailure();
        throw;
    }
    CallPlugin(kFailed, mRequest.modulePath, [this] { SaveState(); });
    if (mRequest.screenshotPath && end != EditEnd::kTimeUp)
        throw CommandError::OfFile(*mRequest.screenshotPath,
                                   "was not written: the window was closed before the time was up");
    if (mReport.HasFailed())
        throw std::runtime_error("the edits could not be written to standard output");
    mRescue.Finish();
}

// The failure that came first is the one to be reported.
void EditSession::SaveAfterFailure() {
    if (!mOpened)
        return;
    try {
        CallPlugin(kFailed, mRequest.modulePath, [this] { SaveState(); });
    } catch (CommandError const& error) {
        mReport.TellNote(std::string("the state could not be saved: ") + error.what());
    }
}

boost::intrusive_ptr<AudioFilter> EditSession::MakeFilter() const {
    auto filter = mPlugin.CreateFilter();
    filter->SetSampleRate(kSampleRate);
    filter->SetBlockSize(kBlockSize);
    return filter;
}

boost::intrusive_ptr<vynaudiofilterhost::AudioFilterEditor> EditSession::MakeEditor() const {
    auto editor = mFilter->HasCustomEditor() ? mFilter->CreateCustomEditor() : nullptr;
    if (!editor)
        throw CommandError::OfPlugin(mRequest.modulePath, "has no window of its own");
    return editor;
}

// The state comes twice: some plug-ins take up what is in it only when it reaches them while they run.
void EditSession::Prepare() {
    std::optional<StateFile> state;
    if (mRequest.statePath) {
        state.emplace(*mRequest.statePath);
        state->Read(*mFilter);
        state->Load(*mFilter);
    }
    if (!mRequest.playPath)
        return;
    mPlayback.emplace(*mFilter, *mRequest.playPath, mRequest.guarded);
    mPlayback->Start();
    if (state && !mFilter->IsSuspended())
        state->Load(*mFilter);
}

EditEnd EditSession::ShowEditor() {
    EditFrame frame(mWindow, *mFilter, MakeEditor());
    mWindow.SetTitle(vyncore::string::UTF16to8(mFilter->GetDisplayName()));
    if (!frame.Open())
        throw CommandError::OfPlugin(mRequest.modulePath, "refused the window that it was given");
    mReport.TellOpened(mWindow.GetSize());
    mOpenedNanos = os::GetMonotonicNanos();
    mOpened = true;
    EditLoop loop(mWindow, frame, mErrors, mInterrupt, [this] { Attend(); });
    EditEnd end = loop.Run(FindDeadline());
    if (end == EditEnd::kTimeUp)
        end = LetSettle(loop);
    if (end == EditEnd::kDisplayLost)
        mRescue.Leave();
    if (end == EditEnd::kTimeUp)
        WritePicture();
    frame.Close();
    mReport.WriteAllEdits();
    return end;
}

// What another window covered has to be drawn first.
EditEnd EditSession::LetSettle(EditLoop& loop) {
    mWindow.Raise();
    return loop.Run(os::GetMonotonicNanos() + kSettleNanos);
}

std::optional<std::uint64_t> EditSession::FindDeadline() const {
    if (!mRequest.screenshotPath)
        return std::nullopt;
    double const nanos = mRequest.afterSeconds * static_cast<double>(kNanosPerSecond);
    return mOpenedNanos + static_cast<std::uint64_t>(std::llround(nanos));
}

void EditSession::Attend() {
    mReport.WriteEdits();
    if (mPlayback) {
        mPlayback->Attend();
        TellPlayback();
    }
    TellTroubles();
}

void EditSession::TellPlayback() {
    for (std::string const& note : mPlayback->TakeNotes())
        mReport.TellNote(note);
}

void EditSession::TellTroubles() {
    if (std::string const refusal = mErrors.TakeFirst(); !refusal.empty())
        mReport.TellNote("the display refused something that was asked of it: " + refusal);
    if (mBlankTold || os::GetMonotonicNanos() < mOpenedNanos + kBlankNanos)
        return;
    mBlankTold = true;
    if (!mWindow.GetContentSize())
        mReport.TellNote("the plug-in has put nothing into the window");
}

void EditSession::WritePicture() {
    WindowSize const size = mWindow.GetSize();
    if (size.width > kMostPicturePixels || size.height > kMostPicturePixels)
        throw CommandError::OfFile(*mRequest.screenshotPath,
                                   "was not written: a window of " + std::to_string(size.width) + " by " +
                                       std::to_string(size.height) + " pixels is too large for a picture");
    std::optional<Screenshot> const picture = mWindow.TakeScreenshot();
    if (mWindow.IsLost())
        mRescue.Leave();
    if (!picture)
        throw CommandError::OfFile(*mRequest.screenshotPath, "was not written: the display gives no picture");
    WritePNGFile(*mRequest.screenshotPath, *picture);
    mReport.TellFile("screenshot", *mRequest.screenshotPath);
}

void EditSession::SaveState() {
    if (mPlayback) {
        mPlayback->Finish();
        TellPlayback();
    }
    if (!mSavedState)
        return;
    mSavedState->Save();
    mReport.TellFile("state", *mRequest.saveStatePath);
}

} // namespace vynhost
