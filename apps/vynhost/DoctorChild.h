#pragma once

#include "vynhost/DoctorReport.h"
#include "vynhost/DoctorWorker.h"
#include "vynhost/WatchedProcess.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vynhost {

/// How the children of an examination are run.
struct DoctorSettings {
    std::string program;     ///< the one that has kDoctorWorkerCommand
    WatchLimits limits = {}; ///< the timeout is for each step
    std::size_t memory = 0;  ///< in bytes, that a plug-in may take; 0 for as much as there is
};

/// One plug-in on its way through the examination.
struct DoctorJob {
    DoctorTask task; ///< what is left to be done
    DoctorRow row;   ///< what is known
};

/// The parent's side of a child process that examines one plug-in. It fills the plug-in's row, and tells what is left
/// to be done when the child has ended before its time.
class DoctorChild {
public:
    /// Throws std::runtime_error when there is no process to be had.
    /// [main-thread]
    DoctorChild(DoctorSettings const& settings, DoctorJob job);

    /// Takes in what the child has sent. Ends the child when it has overstepped a limit.
    /// [main-thread]
    void Advance();

    /// [main-thread]
    bool HasEnded() const noexcept { return mProcess.HasEnded(); }
    /// Of a child that has ended: why, in words that go on after "it ", when that was before any plug-in's code ran.
    /// [main-thread]
    std::optional<std::string> FindOwnFault() const;
    /// Of a child that has ended: its job, with what is left to be done.
    /// [main-thread]
    DoctorJob TakeJob();
    /// Of a child that has ended: whether its job is to be gone on with in another.
    /// [main-thread]
    bool IsUnfinished() const noexcept { return mUnfinished; }
    /// The further plug-ins of the module, when the job named none.
    /// [main-thread]
    std::vector<std::string> const& GetOthers() const noexcept { return mOthers; }

    /// [main-thread]
    WatchedProcess const& GetProcess() const noexcept { return mProcess; }

private:
    bool Take(ScanFrame const& frame);
    bool TakeClass(std::string const& id);
    bool TakeStep(std::string const& text);
    void NoteEnd();

    DoctorJob mJob;
    WatchedProcess mProcess;
    bool mBegun = false;
    bool mDone = false;
    bool mUnfinished = false;
    bool mIsForged = false;        ///< something was told that the child doesn't tell
    std::string mStep = kScanStep; ///< that is being gone through
    std::uint64_t mStepStarted = 0;
    std::vector<std::string> mOthers;
};

} // namespace vynhost
