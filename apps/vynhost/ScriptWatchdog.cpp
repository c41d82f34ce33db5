#include "vynhost/ScriptWatchdog.h"

#include "vynhost/NumberText.h"

#include "os/FileRemovalOnSignals.h"

#include <cstdlib>
#include <utility>

namespace vynhost {

ScriptWatchdog::ScriptWatchdog(FailureForm form, std::string script, double seconds)
    : mForm(form), mScript(std::move(script)), mSeconds(seconds) {
    if (mSeconds <= 0)
        return;
    Restart(mPart);
    mThread = std::thread([this] { Watch(); });
}

ScriptWatchdog::~ScriptWatchdog() {
    if (!mThread.joinable())
        return;
    {
        std::scoped_lock const lock(mMutex);
        mDone = true;
    }
    mChanged.notify_one();
    mThread.join();
}

void ScriptWatchdog::Restart(char const* part) {
    std::scoped_lock const lock(mMutex);
    mPart = part;
    mDeadline =
        Clock::now() + kGrace + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(mSeconds));
}

void ScriptWatchdog::Watch() {
    std::unique_lock lock(mMutex);
    while (!mDone) {
        Clock::time_point const deadline = mDeadline;
        if (!mChanged.wait_until(lock, deadline, [this] { return mDone; }) && deadline == mDeadline)
            End();
    }
}

// The lock is held to the end: nobody else ends the process meanwhile.
void ScriptWatchdog::End() noexcept {
    std::vector<char>().swap(mReserve);
    os::FileRemovalOnSignals::RemoveNow();
    ExitStatus const status = RunCommand(mForm, [this]() -> std::string {
        throw CommandError::OfFile(mScript, "ended because " + std::string(mPart) + " did not come back within " +
                                                WriteNumber(mSeconds) + " seconds (--timeout)");
    });
    std::_Exit(static_cast<int>(status));
}

} // namespace vynhost
