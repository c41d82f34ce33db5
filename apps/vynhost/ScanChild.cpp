#include "vynhost/ScanChild.h"

#include "vynhost/OneLine.h"
#include "vynhost/ScanWorker.h"

#include "os/Clock.h"

#include <utility>

namespace vynhost {

namespace {

constexpr double kNanosPerSecond = 1e9;
constexpr std::uint64_t kLinger = 250'000'000; ///< nanoseconds, for what a module has left to be done later

std::vector<std::string> MakeArguments(ScanChildSettings const& settings) {
    return {kScanWorkerCommand, "--memory", std::to_string(settings.memory)};
}

} // namespace

ScanChild::ScanChild(ScanChildSettings const& settings, bool alone)
    : mAlone(alone), mProcess(settings.program, MakeArguments(settings), settings.limits) {}

void ScanChild::Reserve(std::size_t job) {
    mJob = job;
    mBegun = false;
    mAnswered = false;
    mDetail.clear();
    mProcess.Begin();
    mOutcome = ScanOutcome{.job = job};
}

void ScanChild::Open(std::string const& locator) {
    mStarted = os::GetMonotonicNanos();
    mProcess.RestartClock();
    mProcess.Send(MakeScanRequest(locator));
}

void ScanChild::CloseInput() {
    mIsLeaving = true;
    mLingerEnd.reset();
    mProcess.CloseInput();
    if (!mProcess.GetDeadline() && !HasEnded())
        mProcess.RestartClock();
}

void ScanChild::Advance() {
    if (HasEnded())
        return;
    mProcess.Advance([this](ScanFrame& frame) { return Take(frame); });
    if (HasEnded())
        NoteEnd();
    else if (mLingerEnd && os::GetMonotonicNanos() >= *mLingerEnd)
        CloseInput();
}

// Nothing is told of no module.
bool ScanChild::Take(ScanFrame& frame) {
    bool const isTrue = frame.kind == ScanFrameKind::kReady || mJob;
    switch (frame.kind) {
    case ScanFrameKind::kReady:
        mReady = true;
        break;
    case ScanFrameKind::kBegun:
        mBegun = true;
        break;
    case ScanFrameKind::kProgress:
        mDetail = std::move(frame.text);
        break;
    case ScanFrameKind::kRefused:
    case ScanFrameKind::kFiled: {
        mAnswered = true;
        bool const filed = frame.kind == ScanFrameKind::kFiled;
        mOutcome.verdict = filed ? ScanOutcome::Verdict::kFiled : ScanOutcome::Verdict::kRefused;
        (filed ? mOutcome.configuration : mOutcome.reason) = std::move(frame.text);
        break;
    }
    case ScanFrameKind::kFilter:
        mOutcome.filters.push_back(std::move(frame.text));
        break;
    case ScanFrameKind::kNote:
        mOutcome.reason = std::move(frame.text);
        break;
    case ScanFrameKind::kUnfit:
        mAlone = true;
        break;
    case ScanFrameKind::kDone:
        FinishModule();
        break;
    }
    return isTrue;
}

void ScanChild::FinishModule() {
    if (!mJob)
        return;
    mOutcome.seconds = GetSeconds();
    mOutcome.reason = OnOneLine(std::move(mOutcome.reason));
    mFinished = std::move(mOutcome);
    mDone.push_back(*mJob);
    mJob.reset();
    mBegun = false;
    mDetail.clear();
    mProcess.StopClock();
    if (mAlone)
        mLingerEnd = os::GetMonotonicNanos() + kLinger;
}

std::optional<ScanOutcome> ScanChild::TakeOutcome() {
    bool const isDue = !mAlone || EndedWell();
    return isDue ? std::exchange(mFinished, std::nullopt) : std::nullopt;
}

void ScanChild::NoteEnd() {
    mReason = mProcess.GetEnd() + DescribePhase() + mProcess.DescribeLastWords();
    mLingerEnd.reset();
}

std::string ScanChild::DescribePhase() const {
    if (!mBegun)
        return mDone.empty() ? "" : " after it was unloaded";
    if (mAnswered)
        return " while it was unloaded";
    return mDetail.empty() ? "" : " at its plug-in" + mDetail;
}

double ScanChild::GetSeconds() const {
    return static_cast<double>(os::GetMonotonicNanos() - mStarted) / kNanosPerSecond;
}

} // namespace vynhost
