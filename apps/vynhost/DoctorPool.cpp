#include "vynhost/DoctorPool.h"

#include "vynhost/CommandError.h"

#include "os/WaitForDescriptors.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vynhost {

namespace {

constexpr int kMostFruitlessEnds = 3;

[[noreturn]] void ThrowNoProcess(std::string const& reason) {
    throw CommandError(ExitStatus::kWorkFailed, CommandError::Subject::kNone, {},
                       "the process to examine plug-ins in " + reason);
}

} // namespace

DoctorPool::DoctorPool(DoctorSettings settings, std::vector<DoctorTask> const& tasks, std::size_t jobs,
                       Observer observer)
    : mSettings(std::move(settings)), mJobs(std::max<std::size_t>(jobs, 1)), mObserver(std::move(observer)) {
    for (DoctorTask const& task : tasks)
        mWaiting.push_back({.task = task, .row = {.path = task.path, .id = task.classID}});
}

DoctorPool::~DoctorPool() = default;

bool DoctorPool::Run(os::InterruptDescriptor const& interrupt) {
    while (!mWaiting.empty() || !mChildren.empty()) {
        Dispatch();
        Wait(interrupt);
        if (interrupt.WasInterrupted())
            return false;
        Advance();
    }
    return true;
}

void DoctorPool::Dispatch() {
    while (!mWaiting.empty() && mChildren.size() < mJobs && StartChild())
        ;
}

// False when there is none to be had now, but children whose end will make room for one.
bool DoctorPool::StartChild() {
    DoctorJob const job = mWaiting.front();
    try {
        mChildren.push_back(std::make_unique<DoctorChild>(mSettings, job));
    } catch (std::runtime_error const& error) {
        if (mChildren.empty())
            ThrowNoProcess(std::string("could not be started: ") + error.what());
        return false;
    }
    mObserver(mRows.size(), mRows.size() + mWaiting.size() + mChildren.size() - 1, job.row);
    mWaiting.pop_front();
    return true;
}

void DoctorPool::Wait(os::InterruptDescriptor const& interrupt) const {
    std::vector<std::intptr_t> descriptors{interrupt.Handle()};
    std::optional<std::uint64_t> deadline;
    for (auto const& child : mChildren) {
        child->GetProcess().AddDescriptors(descriptors);
        std::optional<std::uint64_t> const own = child->GetProcess().GetDeadline();
        deadline = own && deadline ? std::min(*own, *deadline) : (own ? own : deadline);
    }
    os::WaitForDescriptors(descriptors, deadline);
}

void DoctorPool::Advance() {
    for (auto const& child : mChildren) {
        child->Advance();
        if (child->HasEnded())
            HandleEnd(*child);
    }
    std::erase_if(mChildren, [](auto const& child) { return child->HasEnded(); });
}

void DoctorPool::HandleEnd(DoctorChild& child) {
    std::optional<std::string> const fault = child.FindOwnFault();
    mFruitlessEnds = fault ? mFruitlessEnds + 1 : 0;
    if (mFruitlessEnds >= kMostFruitlessEnds)
        ThrowNoProcess(*fault);
    bool const isUnfinished = fault || child.IsUnfinished();
    DoctorJob job = child.TakeJob();
    for (std::string const& id : child.GetOthers()) {
        DoctorTask const task{.path = job.task.path, .classID = id, .steps = ListDoctorSteps()};
        mWaiting.push_back({.task = task, .row = {.path = task.path, .id = id, .technology = job.row.technology}});
    }
    if (isUnfinished)
        mWaiting.push_front(std::move(job));
    else
        mRows.push_back(std::move(job.row));
}

} // namespace vynhost
