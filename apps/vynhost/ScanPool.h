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
/// it dies. Where there is no room for as many children as wanted, fewer do the work.
///
/// Who is to blame when a module is refused or its child dies, be it by itself or for a limit:
/// 1. The module at hand, when it is the child's first.
/// 2. Otherwise one that went before may have left something behind. The module is opened again in another child: one
///    that is refused, or gives less than it has, as the first there; one whose child died in a child of its own, which
///    must end well.
/// 3. If that ends well, or in another way than the first time (of itself, or for a limit), those that went before the
///    module when its child died are tried in the same way, each by itself.
/// 4. A module that leaves something behind that can be seen (threads, processes, descriptors) is its child's last, and
///    the first to be tried by itself for whatever becomes of the child soon after.
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
    /// What kind of child a module wants.
    enum class Want {
        kAny,
        kFresh, ///< one that has opened nothing yet
        kAlone, ///< one of its own
    };
    /// Why a module is tried again by itself.
    struct Doubt {
        std::vector<std::size_t> others; ///< that may be the ones to blame
        bool stopped;                    ///< whether the child was ended for a limit
    };
    using Children = std::vector<std::unique_ptr<ScanChild>>;

    void Dispatch(IScanLedger& ledger);
    ScanChild* ReserveNext(std::deque<std::size_t>& waiting);
    ScanChild* FindChild(Want want);
    ScanChild* MakeChild(bool alone);
    void LetGo();
    void Wait(os::InterruptDescriptor const& interrupt, std::optional<std::uint64_t> deadline) const;
    void Advance(IScanLedger& ledger);
    void TakeOutcome(ScanChild& child, IScanLedger& ledger);
    void HandleEnd(ScanChild const& child, IScanLedger& ledger);
    void HandleIdleEnd(ScanChild const& child, IScanLedger& ledger);
    void HandleFruitlessEnd(ScanChild const& child);
    void Suspect(std::size_t job, std::vector<std::size_t> others, ScanChild const& child);
    void Blame(std::size_t job, ScanChild const& child, IScanLedger& ledger);
    void TryAgain(std::size_t job, Want want);
    void TryAlone(std::vector<std::size_t> const& jobs);
    Want WantOf(std::size_t job) const;
    bool HasWork() const noexcept { return !mWaiting.empty() || !mWaitingAgain.empty(); }

    ScanChildSettings const mSettings;
    std::vector<std::string> const mLocators;
    std::size_t const mJobs;
    Children mChildren;
    std::deque<std::size_t> mWaiting;
    std::deque<std::size_t> mWaitingAgain;
    std::map<std::size_t, Want> mWants;   ///< of those that were put up for another try
    std::map<std::size_t, Doubt> mDoubts; ///< of those whose child died
    int mFruitlessEnds = 0;
};

} // namespace vynhost
