#include "os/CallQueueDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace os {
namespace {

constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;

bool WatchWith(std::intptr_t poller, std::intptr_t descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = static_cast<int>(descriptor);
    return epoll_ctl(static_cast<int>(poller), EPOLL_CTL_ADD, event.data.fd, &event) == 0;
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
    if (mTimer < 0 || mHandle < 0 || !WatchWith(mHandle, mTimer)) {
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

bool CallQueueDescriptor::Watch(std::intptr_t descriptor) noexcept {
    bool const own = descriptor == mTimer || descriptor == mHandle;
    return mHandle >= 0 && !own && (WatchWith(mHandle, descriptor) || errno == EEXIST);
}

void CallQueueDescriptor::Unwatch(std::intptr_t descriptor) noexcept {
    epoll_event ignored{};
    if (mHandle >= 0)
        epoll_ctl(static_cast<int>(mHandle), EPOLL_CTL_DEL, static_cast<int>(descriptor), &ignored);
}

std::vector<CallQueueDescriptor::Ready> CallQueueDescriptor::GetReady() const {
    // More than that are told the next time: those that have been told take their turn behind the others.
    std::array<epoll_event, 64> events;
    int const count = mHandle >= 0 ? epoll_wait(static_cast<int>(mHandle), events.data(), events.size(), 0) : 0;
    std::vector<Ready> ready;
    for (epoll_event const& event : std::span(events).first(static_cast<std::size_t>(std::max(count, 0)))) {
        if (event.data.fd != mTimer)
            ready.push_back({event.data.fd, (event.events & (EPOLLHUP | EPOLLERR)) != 0});
    }
    return ready;
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
