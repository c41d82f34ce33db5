#pragma once

#include "vynhost/DoctorChild.h"

#include "os/InterruptDescriptor.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vynhost {

/// Sends plug-ins through their examinations, several side by side, each in a child of its own. One that takes its
/// child down in a step goes on in another with the steps that are left; what other plug-ins a module turns out to hold
/// join the queue.
class DoctorPool {
public:
    /// Hears of each plug-in that is begun, and how many of how many are done.
    using Observer = std::function<void(std::size_t done, std::size_t total, DoctorRow const& begun)>;

    /// @param jobs  how many children there may be at a time, at least 1
    /// [main-thread]
    DoctorPool(DoctorSettings settings, std::vector<DoctorTask> const& tasks, std::size_t jobs, Observer observer);
    /// Ends the children.
    /// [main-thread]
    ~DoctorPool();

    /// Goes through all tasks. False when the program was interrupted before the end. Throws CommandError when children
    /// can't be made to work.
    /// [main-thread]
    bool Run(os::InterruptDescriptor const& interrupt);

    /// Of those that are done, in no particular order. To be taken once.
    /// [main-thread]
    std::vector<DoctorRow> TakeRows() { return std::move(mRows); }

private:
    void Dispatch();
    bool StartChild();
    void Wait(os::InterruptDescriptor const& interrupt) const;
    void Advance();
    void HandleEnd(DoctorChild& child);

    DoctorSettings const mSettings;
    std::size_t const mJobs;
    Observer const mObserver;
    std::deque<DoctorJob> mWaiting;
    std::vector<std::unique_ptr<DoctorChild>> mChildren;
    std::vector<DoctorRow> mRows;
    int mFruitlessEnds = 0; ///< of children in a row that didn't get to any plug-in
};

} // namespace vynhost
