#include "os/CallQueueDescriptor.h"

#include <algorithm>

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace os {
namespace {

constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;

bool Watch(int poller, int timer) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = timer;
    return epoll_ctl(poller, EPOLL_CTL_ADD, timer, &event) == 0;
}

void Close(std::intptr_t& descriptor) {
    if (descriptor >= 0)
        close(static_cast<int>(descriptor));
    descriptor = -1;
}

} // namespace

// The handle is a poller around the timer and not the timer itself, so that other descriptors can wake the same wait.
CallQueueDescriptor::CallQueueDescriptor() noexcept
    : mTimer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)), mHandle(epoll_create1(EPOLL_CLOEXEC)) {
    if (mTimer < 0 || mHandle < 0 || !Watch(static_cast<int>(mHandle), static_cast<int>(mTimer))) {
        Close(mHandle);
        Close(mTimer);
    }
}

CallQueueDescriptor::~CallQueueDescriptor() {
    Close(mHandle);
    Close(mTimer);
}

void CallQueueDescriptor::Arm(std::uint64_t dueNanos) noexcept {
    // To the timer a time of 0 means "never".
    Set(std::max<std::uint64_t>(dueNanos, 1));
}

void CallQueueDescriptor::Disarm() noexcept {
    Set(0);
}

void CallQueueDescriptor::Set(std::uint64_t dueNanos) noexcept {
    // An alarm that stands already, or has gone off already, is as good as a new one and costs no system call.
    if (mTimer < 0 || dueNanos == mArmedFor)
        return;
    mArmedFor = dueNanos;
    itimerspec spec{};
    spec.it_value.tv_sec = static_cast<time_t>(dueNanos / kNanosPerSecond);
    spec.it_value.tv_nsec = static_cast<long>(dueNanos % kNanosPerSecond);
    // Setting the timer also forgets an expiry that nobody has read.
    timerfd_settime(static_cast<int>(mTimer), TFD_TIMER_ABSTIME, &spec, nullptr);
}

} // namespace os
