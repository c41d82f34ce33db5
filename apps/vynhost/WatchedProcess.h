#pragma once

#include "vynhost/ScanFrame.h"

#include "os/ChildProcess.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vynhost {

/// What a process that runs plug-ins' code may do.
struct WatchLimits {
    double timeout = 20.0;         ///< in seconds, from a Restart of the clock on
    std::size_t output = 16 << 20; ///< in bytes, that may be printed between two calls of Begin
    std::size_t answer = 96 << 20; ///< in bytes, that may be told likewise
};

/// A child of this program that runs plug-ins' code and tells of it in ScanFrames, and the limits that it is held to:
/// whatever its plug-ins do, it ends in time, with a reason in words.
///
/// Life: made; Begin and Send for each piece of work; Advance whenever a descriptor is readable or the deadline has
/// come, until HasEnded.
class WatchedProcess {
public:
    /// Takes a frame; false when it is none that could come now.
    using Taker = std::function<bool(ScanFrame& frame)>;

    /// Starts `program` with the arguments. Throws std::runtime_error when there is no process to be had.
    /// [main-thread]
    WatchedProcess(std::string const& program, std::vector<std::string> const& arguments, WatchLimits limits);

    /// What was printed and told until now counts no more.
    /// [main-thread]
    void Begin();
    /// The process has the whole timeout from now on.
    /// [main-thread]
    void RestartClock();
    /// The process may take for ever.
    /// [main-thread]
    void StopClock() noexcept { mDeadline.reset(); }

    /// What can't be sent is lost: the process's end is about to be seen.
    /// [main-thread]
    void Send(std::string_view text) { mProcess.Send(text); }
    /// [main-thread]
    void CloseInput() { mProcess.CloseInput(); }

    /// Takes in what the process has sent. Ends it when it has overstepped a limit.
    /// [main-thread]
    void Advance(Taker const& take);

    /// [main-thread]
    bool HasEnded() const noexcept { return mEnded; }
    /// Of a process that has ended: whether it did so by itself, with status 0.
    /// [main-thread]
    bool EndedCleanly() const noexcept { return mEndedCleanly; }
    /// Of a process that has ended: whether that was for a limit.
    /// [main-thread]
    bool WasStopped() const noexcept { return mStopped; }
    /// Of a process that has ended: how, in words that go on after "it ".
    /// [main-thread]
    std::string const& GetEnd() const noexcept { return mEnd; }
    /// The last line that was printed, as a further part of a sentence; empty when there is none.
    /// [main-thread]
    std::string DescribeLastWords() const;

    /// The descriptors to wait for, appended.
    /// [main-thread]
    void AddDescriptors(std::vector<std::intptr_t>& descriptors) const;
    /// A time of os::GetMonotonicNanos; empty for never.
    /// [main-thread]
    std::optional<std::uint64_t> GetDeadline() const noexcept { return mDeadline; }

private:
    bool TakeFrames(Taker const& take);
    void TakeErrors();
    void CheckLimits(bool makesSense);
    void Stop(std::string const& reason);

    WatchLimits const mLimits;
    os::ChildProcess mProcess;
    ScanFrameReader mFrames;
    std::optional<std::uint64_t> mDeadline;
    std::size_t mTold = 0;
    std::size_t mPrinted = 0;
    std::string mErrors; ///< the end of what was printed
    bool mEnded = false;
    bool mEndedCleanly = false;
    bool mStopped = false;
    std::string mEnd;
};

} // namespace vynhost
