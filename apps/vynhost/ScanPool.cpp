#include "vynhost/ScanPool.h"

#include "vynhost/CommandError.h"

#include "os/WaitForDescriptors.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

// The earlier of two times, each of which may be never.
std::optional<std::uint64_t> Earlier(std::optional<std::uint64_t> left, std::optional<std::uint64_t> right) {
    return left && right ? std::min(left, right) : (left ? left : right);
}

} // namespace

ScanPool::ScanPool(ScanChildSettings settings, std::vector<std::string> locators, std::size_t jobs)
    : mSettings(std::move(settings)),
      mLocators(std::move(locators)),
      mJobs(std::max<std::size_t>(jobs, 1)),
      mWaiting(mLocators.size()) {
    std::iota(mWaiting.begin(), mWaiting.end(), std::size_t{0});
}

ScanPool::~ScanPool() = default;

bool ScanPool::Run(IScanLedger& ledger, os::InterruptDescriptor const& interrupt) {
    // They start up while the ledger writes down what they are about to do.
    while (mChildren.size() < std::min(mJobs, mWaiting.size()))
        MakeChild(false);
    while (HasWork() || !mChildren.empty()) {
        Dispatch(ledger);
        LetGo();
        Wait(interrupt, ledger.Rest());
        if (interrupt.WasInterrupted())
            return false;
        Advance(ledger);
    }
    return true;
}

void ScanPool::Dispatch(IScanLedger& ledger) {
    std::vector<ScanChild*> chosen;
    std::vector<std::size_t> jobs;
    for (bool const alone : {true, false}) {
        auto& waiting = alone ? mWaitingAlone : mWaiting;
        while (!waiting.empty()) {
            ScanChild* const child = FindChild(alone);
            if (!child)
                break;
            child->Reserve(waiting.front());
            chosen.push_back(child);
            jobs.push_back(waiting.front());
            waiting.pop_front();
        }
    }
    if (jobs.empty())
        return;
    ledger.Admit(jobs);
    for (std::size_t i = 0; i < jobs.size(); ++i)
        chosen[i]->Open(mLocators[jobs[i]]);
}

// Null when all are at work. One that has gone through modules already makes room for one that is to be alone.
ScanChild* ScanPool::FindChild(bool alone) {
    auto const found = std::ranges::find_if(mChildren, [](auto const& child) { return child->IsFree(); });
    if (found != mChildren.end() && !alone)
        return found->get();
    if (found != mChildren.end())
        mChildren.erase(found);
    auto const working = std::ranges::count_if(mChildren, [](auto const& child) { return !child->IsLingering(); });
    return static_cast<std::size_t>(working) < mJobs ? MakeChild(alone) : nullptr;
}

ScanChild* ScanPool::MakeChild(bool alone) {
    try {
        return mChildren.emplace_back(std::make_unique<ScanChild>(mSettings, alone)).get();
    } catch (std::runtime_error const& error) {
        throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                           std::string("a process to open plug-ins in could not be started: ") + error.what());
    }
}

void ScanPool::LetGo() {
    for (auto const& child : mChildren) {
        if (!HasWork() && child->IsFree())
            child->CloseInput();
    }
}

void ScanPool::Wait(os::InterruptDescriptor const& interrupt, std::optional<std::uint64_t> deadline) const {
    std::vector<std::intptr_t> descriptors{interrupt.Handle()};
    for (auto const& child : mChildren) {
        child->AddDescriptors(descriptors);
        deadline = Earlier(deadline, child->GetDeadline());
    }
    os::WaitForDescriptors(descriptors, deadline);
}

void ScanPool::Advance(IScanLedger& ledger) {
    for (auto const& child : mChildren) {
        child->Advance();
        TakeOutcome(*child, ledger);
        if (child->HasEnded())
            HandleEnd(*child, ledger);
    }
    std::erase_if(mChildren, [](auto const& child) { return child->HasEnded(); });
}

void ScanPool::TakeOutcome(ScanChild& child, IScanLedger& ledger) {
    std::optional<ScanOutcome> const outcome = child.TakeOutcome();
    if (!outcome)
        return;
    ledger.Settle(*outcome);
    mFruitlessEnds = 0;
    if (auto suspects = mSuspects.extract(outcome->job); child.IsAlone() && suspects)
        TryAlone(suspects.mapped());
}

void ScanPool::HandleEnd(ScanChild const& child, IScanLedger& ledger) {
    std::optional<std::size_t> const job = child.GetJob();
    if (!job || !child.HasBegun()) {
        if (job)
            (child.IsAlone() ? mWaitingAlone : mWaiting).push_front(*job);
        HandleIdleEnd(child, ledger);
    } else if (child.WasStopped() || child.IsAlone() || child.GetDone().empty()) {
        Blame(*job, child, ledger);
    } else {
        mSuspects[*job] = child.GetDone();
        TryAlone({*job});
    }
}

// Between two modules, before the first or behind the last.
void ScanPool::HandleIdleEnd(ScanChild const& child, IScanLedger& ledger) {
    if (child.GetDone().empty())
        HandleFruitlessEnd(child);
    else if (child.EndedWell())
        return;
    else if (child.IsAlone() || child.GetDone().size() == 1)
        Blame(child.GetDone().back(), child, ledger);
    else
        TryAlone(child.GetDone());
}

// Nothing was opened, so that no module can be at fault.
void ScanPool::HandleFruitlessEnd(ScanChild const& child) {
    constexpr int kMostInARow = 3;
    if (child.EndedWell() && !child.GetJob())
        return;
    if (!child.WasReady() || ++mFruitlessEnds >= kMostInARow)
        throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                           "the process to open plug-ins in " + child.GetReason());
}

void ScanPool::Blame(std::size_t job, ScanChild const& child, IScanLedger& ledger) {
    // What oversteps a limit alone isn't what another child died of.
    if (auto suspects = mSuspects.extract(job); suspects && child.WasStopped())
        TryAlone(suspects.mapped());
    ledger.Settle({.job = job,
                   .verdict = ScanOutcome::Verdict::kBanned,
                   .reason = child.GetReason(),
                   .seconds = child.GetSeconds()});
}

void ScanPool::TryAlone(std::vector<std::size_t> const& jobs) {
    mWaitingAlone.insert(mWaitingAlone.end(), jobs.begin(), jobs.end());
}

} // namespace vynhost
