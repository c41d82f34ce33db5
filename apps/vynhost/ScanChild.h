#pragma once

#include "vynhost/ScanFrame.h"
#include "vynhost/ScanOutcome.h"
#include "vynhost/WatchedProcess.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// How the children of a scan are run.
struct ScanChildSettings {
    std::string program;     ///< the one that has kScanWorkerCommand
    WatchLimits limits = {}; ///< for each module
    std::size_t memory = 0;  ///< in bytes, that modules may take; 0 for as much as there is
};

/// The parent's side of one child process that opens modules, one after the other. It tells what the child has found
/// out and whether the child goes on; what follows from that is the pool's affair.
///
/// Life: made; Reserve whenever IsFree, then Open; Advance whenever a descriptor is readable or the deadline has come.
/// TakeOutcome gives what is known of a module once the child is done with it. Once HasEnded, nothing more comes.
class ScanChild {
public:
    /// @param alone  for one module only: what is known of that counts when the child has ended well behind it. A child
    ///               whose module leaves something behind (threads, processes, descriptors) becomes so.
    /// Throws std::runtime_error when there is no process to be had.
    /// [main-thread]
    ScanChild(ScanChildSettings const& settings, bool alone);

    /// Chooses the child for a module, which it hears nothing of yet.
    /// [main-thread]
    void Reserve(std::size_t job);
    /// Gives the child the module that it was chosen for.
    /// @param locator  text form of its PluginLocator
    /// [main-thread]
    void Open(std::string const& locator);

    /// Takes in what the child has sent. Ends the child when it has overstepped a limit.
    /// [main-thread]
    void Advance();

    /// What is known of the last module, given once.
    /// [main-thread]
    std::optional<ScanOutcome> TakeOutcome();

    /// No further module will come: the child ends by itself, as fast as it should end a module. May be called again.
    /// [main-thread]
    void CloseInput();

    /// Whether the child can take a module.
    /// [main-thread]
    bool IsFree() const noexcept { return !mJob && !mIsLeaving && !HasEnded() && !(mAlone && !mDone.empty()); }
    /// [main-thread]
    bool HasEnded() const noexcept { return mProcess.HasEnded(); }
    /// Whether the child has ever been ready to work.
    /// [main-thread]
    bool WasReady() const noexcept { return mReady; }
    /// Whether the child takes no further module.
    /// [main-thread]
    bool IsAlone() const noexcept { return mAlone; }
    /// Whether the child is through with its last module, and only waited for in case that shows an effect yet.
    /// [main-thread]
    bool IsLingering() const noexcept { return mLingerEnd.has_value(); }

    /// The module that the child is at, or was when it ended.
    /// [main-thread]
    std::optional<std::size_t> GetJob() const noexcept { return mJob; }
    /// Whether that one's code may have run.
    /// [main-thread]
    bool HasBegun() const noexcept { return mBegun; }
    /// The modules that the child is through with, in order.
    /// [main-thread]
    std::vector<std::size_t> const& GetDone() const noexcept { return mDone; }

    /// Of a child that has ended: whether it did so by itself and in order.
    /// [main-thread]
    bool EndedWell() const noexcept { return mProcess.EndedCleanly() && !mBegun; }
    /// Of a child that has ended: whether it was ended for a limit that the module at hand has overstepped.
    /// [main-thread]
    bool WasStopped() const noexcept { return mProcess.WasStopped(); }
    /// Of a child that has ended: why, for a person; goes on after "it ".
    /// [main-thread]
    std::string const& GetReason() const noexcept { return mReason; }
    /// Since the module was given to the child.
    /// [main-thread]
    double GetSeconds() const;

    /// The descriptors to wait for, appended.
    /// [main-thread]
    void AddDescriptors(std::vector<std::intptr_t>& descriptors) const { mProcess.AddDescriptors(descriptors); }
    /// The time of os::GetMonotonicNanos at which Advance has something to do in any case; empty for never.
    /// [main-thread]
    std::optional<std::uint64_t> GetDeadline() const noexcept {
        return mLingerEnd ? mLingerEnd : mProcess.GetDeadline();
    }

private:
    bool Take(ScanFrame& frame);
    void FinishModule();
    void NoteEnd();
    std::string DescribePhase() const;

    bool mAlone;
    WatchedProcess mProcess;

    bool mReady = false;
    bool mIsLeaving = false; ///< its input is closed
    std::optional<std::size_t> mJob;
    bool mBegun = false;
    bool mAnswered = false;
    std::string mDetail;
    std::uint64_t mStarted = 0;
    std::optional<std::uint64_t> mLingerEnd; ///< of a child that is alone, behind its last module
    ScanOutcome mOutcome;
    std::optional<ScanOutcome> mFinished;
    std::vector<std::size_t> mDone;

    std::string mReason;
};

} // namespace vynhost
