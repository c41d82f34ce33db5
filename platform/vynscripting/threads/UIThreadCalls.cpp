#include "vynscripting/threads/UIThreadCalls.h"

#include "vyncore/threads/MainThreadCalls.h"
#include "vyncore/threads/Threads.h"
#include "vynscripting/InternalErrorException.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>

namespace vynscripting::threads {

namespace {

constexpr unsigned kDefaultTimeout = 10'000;

constinit std::atomic<unsigned> theTimeout{kDefaultTimeout};
constinit std::atomic<unsigned> theUIThread{0};

// One filed call. The caller may give up before the main thread comes to it: both hold the record.
class FiledCall {
public:
    explicit FiledCall(std::function<void()> const& call) : mCall(call) {}

    void Run() {
        {
            std::scoped_lock const lock(mMutex);
            if (mState != State::kWaiting)
                return;
            mState = State::kRunning;
        }
        try {
            mCall();
        } catch (...) {
            mFailure = std::current_exception();
        }
        std::scoped_lock const lock(mMutex);
        mState = State::kDone;
        mChanged.notify_all();
    }

    void WaitFor(std::chrono::milliseconds time) {
        std::unique_lock lock(mMutex);
        mChanged.wait_for(lock, time, [&] { return mState == State::kDone; });
        if (mState == State::kWaiting) {
            mState = State::kGivenUp;
            throw InternalErrorException();
        }
        mChanged.wait(lock, [&] { return mState == State::kDone; });
        if (mFailure)
            std::rethrow_exception(mFailure);
    }

private:
    enum class State { kWaiting, kRunning, kDone, kGivenUp };

    std::function<void()> const mCall;
    std::mutex mMutex;
    std::condition_variable mChanged;
    State mState = State::kWaiting;
    std::exception_ptr mFailure;
};

} // namespace

unsigned GetSynchronousTimeout() noexcept {
    return theTimeout.load(std::memory_order_relaxed);
}

void SetSynchronousTimeout(unsigned milliseconds) noexcept {
    theTimeout.store(milliseconds, std::memory_order_relaxed);
}

void SetUIThreadToCurrentThread() noexcept {
    theUIThread.store(vyncore::threads::GetCurrentThreadID(), std::memory_order_relaxed);
}

void DirectVoidCallOnUIThread(std::function<void()> const& call, unsigned milliseconds) {
    if (vyncore::threads::GetCurrentThreadID() == theUIThread.load(std::memory_order_relaxed)) {
        call();
        return;
    }
    auto const filed = std::make_shared<FiledCall>(call);
    if (!vyncore::threads::AsyncCallFromMainThread([filed] { filed->Run(); }, 0))
        throw InternalErrorException();
    filed->WaitFor(std::chrono::milliseconds(milliseconds));
}

} // namespace vynscripting::threads
