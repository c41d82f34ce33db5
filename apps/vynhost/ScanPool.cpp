#include "vynhost/ScanPool.h"

#include "vynhost/CommandError.h"

#include "os/ChildProcess.h"
#include "os/WaitForDescriptors.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

// The earlier of two times, each of which may be never.
std::optional<std::uint64_t> Earlier(std::optional<std::uint64_t> left, std::optional<std::uint64_t> right) {
    return left && right ? std::min(left, right) : (left ? left : right);
}

constexpr std::size_t kMostLingering = 16;

// A module that went before may be the reason that it is refused, or that one of its plug-ins could not be made.
bool IsDoubtful(ScanOutcome const& outcome) {
    return outcome.verdict != ScanOutcome::Verdict::kFiled || !outcome.reason.empty();
}

// Of descriptors for one more child, and for saving what is found out.
bool HasRoomForChild() {
    constexpr int kOfChild = 7;
    constexpr int kReserve = 16;
    return os::CountDescriptors() + kOfChild + kReserve <= os::GetMostDescriptors();
}

std::vector<std::size_t> AllButLast(std::vector<std::size_t> const& jobs) {
    return {jobs.begin(), std::prev(jobs.end())};
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
    while (mChildren.size() < std::min(mJobs, mWaiting.size()) && MakeChild(false))
        ;
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
    for (auto* const waiting : {&mWaitingAgain, &mWaiting}) {
        while (ScanChild* const child = ReserveNext(*waiting)) {
            chosen.push_back(child);
            jobs.push_back(*child->GetJob());
        }
    }
    if (jobs.empty())
        return;
    ledger.Admit(jobs);
    for (std::size_t i = 0; i < jobs.size(); ++i)
        chosen[i]->Open(mLocators[jobs[i]]);
}

// Null when nothing waits, or all children are at work.
ScanChild* ScanPool::ReserveNext(std::deque<std::size_t>& waiting) {
    ScanChild* const child = waiting.empty() ? nullptr : FindChild(WantOf(waiting.front()));
    if (child) {
        child->Reserve(waiting.front());
        waiting.pop_front();
    }
    return child;
}

// One that isn't fit for what is wanted makes room for one that is. Those that linger take no time, only room.
ScanChild* ScanPool::FindChild(Want want) {
    auto const found = std::ranges::find_if(mChildren, [](auto const& child) { return child->IsFree(); });
    if (found != mChildren.end()) {
        bool const isFresh = (*found)->GetDone().empty();
        if (want == Want::kAny || (want == Want::kFresh && isFresh))
            return found->get();
        mChildren.erase(found);
    }
    auto const working = std::ranges::count_if(mChildren, [](auto const& child) { return !child->IsLingering(); });
    bool const isRoom = static_cast<std::size_t>(working) < mJobs && mChildren.size() < mJobs + kMostLingering;
    return isRoom ? MakeChild(want == Want::kAlone) : nullptr;
}

// Null when there is none to be had now, but children whose end will make room for one.
ScanChild* ScanPool::MakeChild(bool alone) {
    if (!mChildren.empty() && !HasRoomForChild())
        return nullptr;
    try {
        return mChildren.emplace_back(std::make_unique<ScanChild>(mSettings, alone)).get();
    } catch (std::runtime_error const& error) {
        if (!mChildren.empty())
            return nullptr;
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
    mFruitlessEnds = 0;
    if (IsDoubtful(*outcome) && child.GetDone().size() > 1)
        return TryAgain(outcome->job, Want::kFresh);
    ledger.Settle(*outcome);
    if (auto const doubt = mDoubts.extract(outcome->job))
        TryAlone(doubt.mapped().others);
}

void ScanPool::HandleEnd(ScanChild const& child, IScanLedger& ledger) {
    std::optional<std::size_t> const job = child.GetJob();
    if (!job || !child.HasBegun()) {
        if (job)
            (mWants.contains(*job) ? mWaitingAgain : mWaiting).push_front(*job);
        HandleIdleEnd(child, ledger);
    } else if (child.GetDone().empty()) {
        Blame(*job, child, ledger);
    } else {
        Suspect(*job, child.GetDone(), child);
    }
}

// Between two modules, before the first or behind the last.
void ScanPool::HandleIdleEnd(ScanChild const& child, IScanLedger& ledger) {
    std::vector<std::size_t> const& done = child.GetDone();
    if (done.empty())
        HandleFruitlessEnd(child);
    else if (child.EndedWell())
        return;
    else if (done.size() == 1)
        Blame(done.back(), child, ledger);
    else if (child.IsAlone())
        Suspect(done.back(), AllButLast(done), child);
    else
        TryAlone(done);
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

void ScanPool::Suspect(std::size_t job, std::vector<std::size_t> others, ScanChild const& child) {
    mDoubts[job] = {std::move(others), child.WasStopped()};
    TryAgain(job, Want::kAlone);
}

void ScanPool::Blame(std::size_t job, ScanChild const& child, IScanLedger& ledger) {
    // What ends this child isn't what the other one ended of.
    if (auto const doubt = mDoubts.extract(job); doubt && doubt.mapped().stopped != child.WasStopped())
        TryAlone(doubt.mapped().others);
    ledger.Settle({.job = job,
                   .verdict = ScanOutcome::Verdict::kBanned,
                   .reason = child.GetReason(),
                   .seconds = child.GetSeconds()});
}

// Nothing to be found out by a third time of the same kind.
void ScanPool::TryAgain(std::size_t job, Want want) {
    auto const [former, isNew] = mWants.try_emplace(job, want);
    if (!isNew && former->second >= want)
        return;
    former->second = want;
    if (std::ranges::find(mWaitingAgain, job) == mWaitingAgain.end())
        mWaitingAgain.push_back(job);
}

void ScanPool::TryAlone(std::vector<std::size_t> const& jobs) {
    for (std::size_t const job : jobs)
        TryAgain(job, Want::kAlone);
}

ScanPool::Want ScanPool::WantOf(std::size_t job) const {
    auto const found = mWants.find(job);
    return found != mWants.end() ? found->second : Want::kAny;
}

} // namespace vynhost
