#pragma once

#include "vynhost/Outcome.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vynhost {

/// Ends the process when a part of a script's work doesn't come back although its time is up: what the script engine
/// runs ends by itself, but not a plug-in and what the host does for the script. A file in the making is removed; the
/// failure names the script.
///
/// Life: made, which starts a thread; Restart before each part; gone when the work is done.
class ScriptWatchdog {
public:
    /// How much longer than its time a part may take.
    static constexpr std::chrono::milliseconds kGrace{3000};

    /// @param form     how the failure is reported
    /// @param script   its path
    /// @param seconds  for each part; 0: without end, and without a thread
    /// [main-thread]
    ScriptWatchdog(FailureForm form, std::string script, double seconds);
    ScriptWatchdog(ScriptWatchdog const&) = delete;
    ScriptWatchdog& operator=(ScriptWatchdog const&) = delete;
    /// [main-thread]
    ~ScriptWatchdog();

    /// Another part of the work begins.
    /// @param part  what doesn't come back, if it doesn't; must outlive the object
    /// [main-thread]
    void Restart(char const* part);

private:
    using Clock = std::chrono::steady_clock;

    void Watch();
    [[noreturn]] void End() noexcept;

    FailureForm const mForm;
    std::string const mScript;
    double const mSeconds;
    std::vector<char> mReserve =
        std::vector<char>(std::size_t{1} << 16); ///< for telling of the failure when memory is out
    std::mutex mMutex;
    std::condition_variable mChanged;
    char const* mPart = "the script";
    Clock::time_point mDeadline;
    bool mDone = false;
    std::thread mThread; ///< uses all that stands above
};

} // namespace vynhost
