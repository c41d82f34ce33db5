#include "os/InterruptDescriptor.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace os {

namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

std::array<struct sigaction, kSignals.size()> theFormerActions;
std::atomic<int> theDescriptor = -1;
std::atomic<bool> theInterruption = false;

void Note(int) {
    int const error = errno;
    theInterruption = true;
    std::uint64_t const one = 1;
    [[maybe_unused]] ssize_t const written = ::write(theDescriptor, &one, sizeof one);
    errno = error;
}

} // namespace

InterruptDescriptor::InterruptDescriptor() {
    theDescriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (theDescriptor == -1)
        throw std::runtime_error("there is no descriptor to be had: " + std::system_category().message(errno));
    theInterruption = false;
    struct sigaction action {};
    action.sa_handler = Note;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &theFormerActions[i]);
        if (theFormerActions[i].sa_handler != SIG_IGN)
            ::sigaction(kSignals[i], &action, nullptr);
    }
}

InterruptDescriptor::~InterruptDescriptor() {
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &theFormerActions[i], nullptr);
    ::close(theDescriptor.exchange(-1));
}

std::intptr_t InterruptDescriptor::Handle() const noexcept {
    return theDescriptor;
}

bool InterruptDescriptor::WasInterrupted() const noexcept {
    return theInterruption;
}

} // namespace os
