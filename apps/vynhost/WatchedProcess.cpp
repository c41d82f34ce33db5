#include "vynhost/WatchedProcess.h"

#include "vynhost/NumberText.h"
#include "vynhost/OneLine.h"

#include "os/Clock.h"

namespace vynhost {

namespace {

constexpr double kNanosPerSecond = 1e9;
constexpr std::size_t kMostRead = 1 << 20; ///< at a time, so that the other children get their turn

} // namespace

WatchedProcess::WatchedProcess(std::string const& program, std::vector<std::string> const& arguments,
                               WatchLimits limits)
    : mLimits(limits), mProcess(program, arguments) {}

void WatchedProcess::Begin() {
    mTold = 0;
    mPrinted = 0;
    mErrors.clear();
}

void WatchedProcess::RestartClock() {
    mDeadline = os::GetMonotonicNanos() + static_cast<std::uint64_t>(mLimits.timeout * kNanosPerSecond);
}

void WatchedProcess::Advance(Taker const& take) {
    if (mEnded)
        return;
    // In this order: what was sent before the end is there when the end is seen.
    std::optional<os::ProcessEnd> const end = mProcess.TakeEnd();
    bool const makesSense = TakeFrames(take);
    TakeErrors();
    if (!end)
        return CheckLimits(makesSense);
    mEnded = true;
    mEndedCleanly = end->IsClean();
    mEnd = end->Describe();
    mDeadline.reset();
}

void WatchedProcess::CheckLimits(bool makesSense) {
    if (!makesSense || mFrames.IsBroken() || mTold > mLimits.answer)
        Stop("answered with what is no answer");
    else if (mPrinted > mLimits.output)
        Stop("printed more than " + std::to_string(mLimits.output >> 20) + " MiB");
    else if (mDeadline && os::GetMonotonicNanos() >= *mDeadline)
        Stop("did not come to an end within " + WriteNumber(mLimits.timeout) + " seconds");
}

bool WatchedProcess::TakeFrames(Taker const& take) {
    std::string bytes;
    mProcess.Read(os::ChildProcess::Stream::kOutput, bytes, kMostRead);
    mTold += bytes.size();
    mFrames.Append(bytes);
    bool makesSense = true;
    while (std::optional<ScanFrame> frame = mFrames.Next())
        makesSense = take(*frame) && makesSense;
    return makesSense;
}

void WatchedProcess::TakeErrors() {
    constexpr std::size_t kKept = 4096;
    std::string text;
    mProcess.Read(os::ChildProcess::Stream::kErrors, text, kMostRead);
    mPrinted += text.size();
    mErrors += text;
    if (mErrors.size() > kKept)
        mErrors.erase(0, mErrors.size() - kKept);
}

void WatchedProcess::Stop(std::string const& reason) {
    mProcess.Kill();
    mEnded = true;
    mStopped = true;
    mEnd = reason;
    mDeadline.reset();
}

std::string WatchedProcess::DescribeLastWords() const {
    constexpr std::size_t kMost = 200;
    std::string_view const text = TrimBlanks(mErrors);
    std::string_view const line = TrimBlanks(text.substr(text.find_last_of('\n') + 1));
    if (line.empty())
        return "";
    return "; its last words: " + OnOneLine(std::string(line.substr(0, kMost)));
}

void WatchedProcess::AddDescriptors(std::vector<std::intptr_t>& descriptors) const {
    if (mEnded)
        return;
    descriptors.push_back(mProcess.GetEndDescriptor());
    descriptors.push_back(mProcess.GetDescriptor(os::ChildProcess::Stream::kOutput));
    descriptors.push_back(mProcess.GetDescriptor(os::ChildProcess::Stream::kErrors));
}

} // namespace vynhost
