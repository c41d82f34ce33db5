#include "vynhost/ScanChild.h"

#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"
#include "vynhost/ScanWorker.h"

#include "os/Clock.h"

#include <utility>

namespace vynhost {

namespace {

constexpr double kNanosPerSecond = 1e9;
constexpr std::uint64_t kLinger = 250'000'000; ///< nanoseconds, for what a module has left to be done later
constexpr std::size_t kMostRead = 1 << 20;     ///< at a time, so that the other children get their turn

std::vector<std::string> MakeArguments(ScanChildSettings const& settings) {
    return {kScanWorkerCommand, "--memory", std::to_string(settings.memory)};
}

} // namespace

ScanChild::ScanChild(ScanChildSettings const& settings, bool alone)
    : mSettings(settings), mAlone(alone), mProcess(settings.program, MakeArguments(settings)) {}

void ScanChild::Reserve(std::size_t job) {
    mJob = job;
    mBegun = false;
    mAnswered = false;
    mDetail.clear();
    mTold = 0;
    mPrinted = 0;
    mErrors.clear();
    mOutcome = ScanOutcome{.job = job};
}

void ScanChild::Open(std::string const& locator) {
    mStarted = os::GetMonotonicNanos();
    SetDeadline();
    // What can't be sent is not begun: the child's end is about to be seen.
    mProcess.Send(MakeScanRequest(locator));
}

void ScanChild::SetDeadline() {
    mDeadline = os::GetMonotonicNanos() + static_cast<std::uint64_t>(mSettings.timeout * kNanosPerSecond);
}

void ScanChild::CloseInput() {
    mIsLeaving = true;
    mLingerEnd.reset();
    mProcess.CloseInput();
    if (!mDeadline && !mEnded)
        SetDeadline();
}

void ScanChild::Advance() {
    if (mEnded)
        return;
    // In this order: what was sent before the end is there when the end is seen.
    std::optional<os::ProcessEnd> const end = mProcess.TakeEnd();
    TakeFrames();
    TakeErrors();
    if (end)
        NoteEnd(*end);
    else if (mFrames.IsBroken() || mIsForged || mTold > mSettings.answer)
        Stop("answered with what is no answer");
    else if (mPrinted > mSettings.output)
        Stop("printed more than " + std::to_string(mSettings.output >> 20) + " MiB");
    else if (mLingerEnd && os::GetMonotonicNanos() >= *mLingerEnd)
        CloseInput();
    else if (mDeadline && os::GetMonotonicNanos() >= *mDeadline)
        Stop("did not come to an end within " + WriteNumber(mSettings.timeout) + " seconds");
}

void ScanChild::TakeFrames() {
    std::string bytes;
    mProcess.Read(os::ChildProcess::Stream::kOutput, bytes, kMostRead);
    mTold += bytes.size();
    mFrames.Append(bytes);
    while (std::optional<ScanFrame> frame = mFrames.Next())
        Take(*frame);
}

void ScanChild::Take(ScanFrame& frame) {
    mIsForged = mIsForged || (frame.kind != ScanFrameKind::kReady && !mJob);
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
    mDeadline.reset();
    if (mAlone)
        mLingerEnd = os::GetMonotonicNanos() + kLinger;
}

std::optional<ScanOutcome> ScanChild::TakeOutcome() {
    bool const isDue = !mAlone || EndedWell();
    return isDue ? std::exchange(mFinished, std::nullopt) : std::nullopt;
}

void ScanChild::TakeErrors() {
    constexpr std::size_t kKept = 4096;
    std::string text;
    mProcess.Read(os::ChildProcess::Stream::kErrors, text, kMostRead);
    mPrinted += text.size();
    mErrors += text;
    if (mErrors.size() > kKept)
        mErrors.erase(0, mErrors.size() - kKept);
}

void ScanChild::Stop(std::string const& reason) {
    mProcess.Kill();
    mEnded = true;
    mStopped = true;
    mReason = reason + DescribePhase() + LastWords();
    mDeadline.reset();
    mLingerEnd.reset();
}

void ScanChild::NoteEnd(os::ProcessEnd const& end) {
    mEnded = true;
    mEndedWell = end.IsClean() && !mBegun;
    mReason = end.Describe() + DescribePhase() + LastWords();
    mDeadline.reset();
    mLingerEnd.reset();
}

std::string ScanChild::DescribePhase() const {
    if (!mBegun)
        return mDone.empty() ? "" : " after it was unloaded";
    if (mAnswered)
        return " while it was unloaded";
    return mDetail.empty() ? "" : " at its plug-in" + mDetail;
}

std::string ScanChild::LastWords() const {
    constexpr std::size_t kMost = 200;
    std::string_view const text = TrimBlanks(mErrors);
    std::string_view const line = TrimBlanks(text.substr(text.find_last_of('\n') + 1));
    if (line.empty())
        return "";
    return "; its last words: " + OnOneLine(std::string(line.substr(0, kMost)));
}

double ScanChild::GetSeconds() const {
    return static_cast<double>(os::GetMonotonicNanos() - mStarted) / kNanosPerSecond;
}

void ScanChild::AddDescriptors(std::vector<std::intptr_t>& descriptors) const {
    if (mEnded)
        return;
    descriptors.push_back(mProcess.GetEndDescriptor());
    descriptors.push_back(mProcess.GetDescriptor(os::ChildProcess::Stream::kOutput));
    descriptors.push_back(mProcess.GetDescriptor(os::ChildProcess::Stream::kErrors));
}

} // namespace vynhost
