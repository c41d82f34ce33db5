#include "vynhost/DoctorChild.h"

#include "vynhost/JSONText.h"
#include "vynhost/OneLine.h"

#include "os/Clock.h"

#include <algorithm>
#include <utility>

namespace vynhost {

namespace {

constexpr std::size_t kMostClasses = 4096;
constexpr std::size_t kLongestID = 4096;
constexpr double kNanosPerSecond = 1e9;

bool IsStep(std::string const& text) {
    return std::ranges::any_of(kDoctorSteps, [&](char const* name) { return text == name; });
}

} // namespace

DoctorChild::DoctorChild(DoctorSettings const& settings, DoctorJob job)
    : mJob(std::move(job)),
      mProcess(settings.program, {kDoctorWorkerCommand, "--memory", std::to_string(settings.memory)}, settings.limits) {
    mProcess.Send(ToLine(ToJSON(mJob.task)));
    mProcess.CloseInput();
}

void DoctorChild::Advance() {
    if (HasEnded())
        return;
    mProcess.Advance([this](ScanFrame const& frame) {
        bool const isTrue = Take(frame);
        mIsForged = mIsForged || !isTrue;
        return isTrue;
    });
    if (HasEnded())
        NoteEnd();
}

bool DoctorChild::Take(ScanFrame const& frame) {
    switch (frame.kind) {
    case ScanFrameKind::kBegun:
        mBegun = true;
        mProcess.RestartClock();
        return true;
    case ScanFrameKind::kProgress:
        if (!IsStep(frame.text))
            return false;
        mStep = frame.text;
        mStepStarted = os::GetMonotonicNanos();
        mProcess.RestartClock();
        return true;
    case ScanFrameKind::kFilter:
        return TakeClass(frame.text);
    case ScanFrameKind::kFiled:
        mJob.row.wasMade = !mJob.task.classID.empty();
        mJob.row.name = OnOneLine(frame.text);
        return mJob.row.wasMade;
    case ScanFrameKind::kNote:
        return TakeStep(frame.text);
    case ScanFrameKind::kDone:
        mDone = mStep == kTeardownStep;
        return mDone;
    default:
        return false;
    }
}

// The first is the one that this child goes on with.
bool DoctorChild::TakeClass(std::string const& id) {
    if (id.empty() || id.size() > kLongestID || mOthers.size() >= kMostClasses)
        return false;
    if (!mJob.task.classID.empty()) {
        mOthers.push_back(id);
        return true;
    }
    mJob.task.classID = id;
    mJob.row.id = id;
    return true;
}

// What went wrong once has gone wrong, even if it goes well in another child.
bool DoctorChild::TakeStep(std::string const& text) {
    auto const document = nlohmann::ordered_json::parse(text, nullptr, false);
    DoctorStep step;
    if (!IsStep(mStep) || !ReadStep(document, step))
        return false;
    std::ranges::transform(step.remarks, step.remarks.begin(), OnOneLine);
    auto const [known, isNew] = mJob.row.steps.try_emplace(mStep, step);
    if (known->second.verdict != DoctorStep::Verdict::kMisbehaves)
        known->second = step;
    if (document.contains("timesRealTime") && document["timesRealTime"].is_number())
        mJob.row.timesRealTime = document["timesRealTime"].get<double>();
    std::erase(mJob.task.steps, mStep);
    return true;
}

void DoctorChild::NoteEnd() {
    if (!mBegun || (mDone && mProcess.EndedCleanly()))
        return;
    DoctorStep& step = mJob.row.steps[mStep];
    step.seconds = static_cast<double>(os::GetMonotonicNanos() - mStepStarted) / kNanosPerSecond;
    if (mIsForged)
        mOthers.clear();
    step.Misbehave(mProcess.GetEnd() + (mDone ? " at the end of its process" : "") + mProcess.DescribeLastWords());
    // Whatever a step is a victim of: it has had its try.
    std::erase(mJob.task.steps, mStep);
    mUnfinished = mJob.row.wasMade && mStep != kScanStep && mStep != kTeardownStep;
}

std::optional<std::string> DoctorChild::FindOwnFault() const {
    return mBegun ? std::nullopt : std::optional(mProcess.GetEnd() + mProcess.DescribeLastWords());
}

DoctorJob DoctorChild::TakeJob() {
    return std::move(mJob);
}

} // namespace vynhost
