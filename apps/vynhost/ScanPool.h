#pragma once

#include "vynhost/ScanChild.h"
#include "vynhost/ScanOutcome.h"

#include "os/InterruptDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// Who keeps the books of a scan, as the pool needs it.
class IScanLedger {
public:
    virtual ~IScanLedger() = default;

    /// The modules are about to be opened, which may be the last thing that this process does. A module may come again.
    /// [main-thread]
    virtual void Admit(std::vector<std::size_t> const& jobs) = 0;

    /// What became of a module. For a module that comes again the last word counts.
    /// [main-thread]
    virtual void Settle(ScanOutcome const& outcome) = 0;

    /// Called when there is nothing else to do at the moment. The time of os::GetMonotonicNanos at which to be called
    /// again, whatever happens; empty when there is no need.
    /// [main-thread]
    virtual std::optional<std::uint64_t> Rest() = 0;
};

/// Opens modules in children, several side by side. Each child takes one module after the other, and is replaced when
/// it dies.
///
/// Who is to blame when a child dies:
/// 1. The module at hand when it is the child's first, and whenever a limit was overstepped.
/// 2. Otherwise one that went before may have left something behind. The module at hand is tried again in a child of
///    its own, which must end well. If it does, or oversteps a limit there, those that went before are tried again in
///    the same way, each by itself.
/// 3. A module that leaves threads behind is its child's last, and to blame for whatever becomes of it soon after.
class ScanPool {
public:
    /// @param locators  text forms of the modules to open, in order
    /// @param jobs      how many children there may be at a time, at least 1
    /// [main-thread]
    ScanPool(ScanChildSettings settings, std::vector<std::string> locators, std::size_t jobs);
    /// Ends the children.
    /// [main-thread]
    ~ScanPool();

    /// Goes through all modules. False when the program was interrupted before the end; modules may have been admitted
    /// and not settled then. Throws CommandError when children can't be made to work, and whatever the ledger throws.
    /// [main-thread]
    bool Run(IScanLedger& ledger, os::InterruptDescriptor const& interrupt);

private:
    using Children = std::vector<std::unique_ptr<ScanChild>>;

    void Dispatch(IScanLedger& ledger);
    ScanChild* FindChild(bool alone);
    ScanChild* MakeChild(bool alone);
    void LetGo();
    void Wait(os::InterruptDescriptor const& interrupt, std::optional<std::uint64_t> deadline) const;
    void Advance(IScanLedger& ledger);
    void TakeOutcome(ScanChild& child, IScanLedger& ledger);
    void HandleEnd(ScanChild const& child, IScanLedger& ledger);
    void HandleIdleEnd(ScanChild const& child, IScanLedger& ledger);
    void HandleFruitlessEnd(ScanChild const& child);
    void Blame(std::size_t job, ScanChild const& child, IScanLedger& ledger);
    void TryAlone(std::vector<std::size_t> const& jobs);
    bool HasWork() const noexcept { return !mWaiting.empty() || !mWaitingAlone.empty(); }

    ScanChildSettings const mSettings;
    std::vector<std::string> const mLocators;
    std::size_t const mJobs;
    Children mChildren;
    std::deque<std::size_t> mWaiting;
    std::deque<std::size_t> mWaitingAlone;
    std::map<std::size_t, std::vector<std::size_t>> mSuspects; ///< those before a module that is tried again alone
    int mFruitlessEnds = 0;
};

} // namespace vynhost
