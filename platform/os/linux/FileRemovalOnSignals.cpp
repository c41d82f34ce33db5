#include "os/FileRemovalOnSignals.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <limits.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace os {

namespace {

// Plug-ins that crash are caught as well; the file of a crashed process is as useless as that of an interrupted one.
constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP,  SIGQUIT, SIGSEGV, SIGBUS,  SIGFPE,
                                    SIGILL, SIGABRT, SIGTRAP, SIGSYS,  SIGXCPU, SIGXFSZ, SIGPIPE};

std::array<struct sigaction, kEndingSignals.size()> theFormerActions;
std::array<char, PATH_MAX> thePath;
std::array<char, 65536> theStack; ///< for a handler whose thread has filled its own
std::atomic<pid_t> theOwner = 0;

// Runs in the middle of anything: only calls that are safe there. A child that a plug-in has forked owns no file.
// Whoever puts in handlers later may call this one and be its former one as well, so that the next call is the last.
void RemoveAndEnd(int signalNumber) {
    FileRemovalOnSignals::RemoveNow();
    auto const place = std::ranges::find(kEndingSignals, signalNumber) - kEndingSignals.begin();
    struct sigaction const former = std::exchange(theFormerActions[static_cast<std::size_t>(place)], {});
    ::sigaction(signalNumber, &former, nullptr);
    ::raise(signalNumber);
}

bool IsIgnored(struct sigaction const& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_IGN;
}

bool IsOurs(struct sigaction const& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == RemoveAndEnd;
}

// A thread that has a stack for signals keeps it.
void LendStack() {
    stack_t former{};
    stack_t const ours{theStack.data(), 0, theStack.size()};
    if (::sigaltstack(nullptr, &former) == 0 && (former.ss_flags & SS_DISABLE) != 0)
        ::sigaltstack(&ours, nullptr);
}

void TakeStackBack() {
    stack_t current{};
    stack_t const none{nullptr, SS_DISABLE, 0};
    if (::sigaltstack(nullptr, &current) == 0 && current.ss_sp == theStack.data())
        ::sigaltstack(&none, nullptr);
}

} // namespace

FileRemovalOnSignals::FileRemovalOnSignals(std::string const& path) {
    if (path.size() >= thePath.size())
        throw std::system_error(ENAMETOOLONG, std::system_category(), "cannot be written");
    std::ranges::copy(path, thePath.begin());
    thePath[path.size()] = '\0';
    theOwner = ::getpid();
    LendStack();
    struct sigaction action {};
    action.sa_handler = RemoveAndEnd;
    action.sa_flags = SA_ONSTACK;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
        ::sigaction(kEndingSignals[i], nullptr, &theFormerActions[i]);
        // What whoever started the process has set to be ignored stays so.
        if (!IsIgnored(theFormerActions[i]))
            ::sigaction(kEndingSignals[i], &action, nullptr);
    }
}

void FileRemovalOnSignals::RemoveNow() noexcept {
    if (::getpid() == theOwner)
        ::unlink(thePath.data());
}

FileRemovalOnSignals::~FileRemovalOnSignals() {
    theOwner = 0;
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
        struct sigaction current {};
        if (::sigaction(kEndingSignals[i], nullptr, &current) == 0 && IsOurs(current))
            ::sigaction(kEndingSignals[i], &theFormerActions[i], nullptr);
    }
    TakeStackBack();
}

} // namespace os
