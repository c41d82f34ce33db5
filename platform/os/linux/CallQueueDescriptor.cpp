#include "os/CallQueueDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>

#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace os {
namespace {

constexpr std::uint64_t kNanosPerSecond = 1'000'000'000;

bool WatchWith(std::intptr_t poller, std::intptr_t descriptor) {
    epoll_event event{};
    event.events = EPOLLIN | EPOLLRDHUP;
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
// Those have a poller of their own inside, which can be made anew.
CallQueueDescriptor::CallQueueDescriptor() noexcept
    : mTimer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)), mHandle(epoll_create1(EPOLL_CLOEXEC)) {
    if (mTimer < 0 || mHandle < 0 || !WatchWith(mHandle, mTimer)) {
        Close(mHandle);
        Close(mTimer);
    }
}

CallQueueDescriptor::~CallQueueDescriptor() {
    Close(mHandle);
    Close(mPoller);
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
    try {
        return AddWatch(descriptor);
    } catch (...) {
        return false;
    }
}

bool CallQueueDescriptor::AddWatch(std::intptr_t descriptor) {
    if (mHandle < 0 || descriptor == mTimer || descriptor == mHandle || descriptor == mPoller)
        return false;
    if (mPoller < 0)
        RenewPoller();
    bool const known = mWatched.count(descriptor) != 0;
    bool const added = WatchWith(mPoller, descriptor);
    if (!added && (!known || errno != EEXIST))
        return false;
    mWatched.insert(descriptor);
    // One of that number was watched, and closed since; it may live on under another number, and be told of.
    if (known && added)
        RenewPoller();
    return true;
}

void CallQueueDescriptor::Unwatch(std::intptr_t descriptor) noexcept {
    epoll_event ignored{};
    if (mWatched.erase(descriptor) == 0)
        return;
    if (epoll_ctl(static_cast<int>(mPoller), EPOLL_CTL_DEL, static_cast<int>(descriptor), &ignored) != 0)
        RenewPoller();
}

// A descriptor that was closed, while a copy of it is open somewhere, can't be taken out of a poller any more.
void CallQueueDescriptor::RenewPoller() {
    Close(mPoller);
    mPoller = epoll_create1(EPOLL_CLOEXEC);
    if (mPoller < 0 || !WatchWith(mHandle, mPoller))
        Close(mPoller);
    for (std::intptr_t const descriptor : mWatched)
        WatchWith(mPoller, descriptor);
}

std::vector<CallQueueDescriptor::Ready> CallQueueDescriptor::GetReady() {
    if (mWatched.empty() || mPoller < 0)
        return {};
    // More than that are told the next time: those that have been told take their turn behind the others.
    std::array<epoll_event, 64> events;
    int const count = epoll_wait(static_cast<int>(mPoller), events.data(), events.size(), 0);
    std::vector<Ready> ready;
    bool stray = false;
    for (epoll_event const& event : std::span(events).first(static_cast<std::size_t>(std::max(count, 0)))) {
        int available = 0;
        stray |= ioctl(event.data.fd, FIONREAD, &available) != 0 && errno == EBADF;
        bool const hungUp = (event.events & (EPOLLHUP | EPOLLERR | EPOLLRDHUP)) != 0;
        if (mWatched.count(event.data.fd) != 0)
            ready.push_back({event.data.fd, hungUp, available});
    }
    if (stray)
        RenewPoller();
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
