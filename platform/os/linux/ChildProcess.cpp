#include "os/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace os {

namespace {

constexpr int kCannotRun = 127;

[[noreturn]] void ThrowSystemError(char const* what, int error = errno) {
    throw std::runtime_error(std::string(what) + ": " + std::system_category().message(error));
}

void Close(int& descriptor) {
    if (descriptor != -1)
        ::close(std::exchange(descriptor, -1));
}

/// Both ends of a stream, until they are given away.
struct StreamEnds {
    int ours = -1;
    int theirs = -1;

    StreamEnds() = default;
    StreamEnds(StreamEnds const&) = delete;
    StreamEnds& operator=(StreamEnds const&) = delete;
    ~StreamEnds() {
        Close(ours);
        Close(theirs);
    }

    // Sockets rather than pipes where this side writes: writing to one that nobody reads can fail without a signal.
    void OpenForWriting() {
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            ThrowSystemError("there is no connection to be had");
        ours = ends[0];
        theirs = ends[1];
        Raise();
    }

    void OpenForReading() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            ThrowSystemError("there is no pipe to be had");
        ours = ends[0];
        theirs = ends[1];
        Raise();
        ::fcntl(ours, F_SETFL, O_NONBLOCK);
    }

private:
    // Out of the way of the standard streams, onto which they are laid.
    void Raise() {
        if (theirs > STDERR_FILENO)
            return;
        int const raised = ::fcntl(theirs, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (raised == -1)
            ThrowSystemError("there is no descriptor to be had");
        ::close(std::exchange(theirs, raised));
    }
};

/// What the new process needs between its birth and the program, made ready before: it may call next to nothing then.
struct Preparation {
    char const* program;
    std::vector<char*> arguments;
    int streams[3];
    pid_t parent;
};

void ForgetSignals() {
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void RunProgram(Preparation const& ready) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != ready.parent)
        ::_exit(kCannotRun);
    // The picture of a crashed process takes the system seconds to store.
    rlimit const none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ForgetSignals();
    for (int stream = 0; stream < 3; ++stream)
        ::dup2(ready.streams[stream], stream);
    ::execv(ready.program, ready.arguments.data());
    char const* const reason = ::strerrordesc_np(errno);
    [[maybe_unused]] ssize_t const written = ::write(STDERR_FILENO, reason, std::strlen(reason));
    ::_exit(kCannotRun);
}

Preparation Prepare(std::string const& program, std::vector<std::string> const& arguments, StreamEnds const& input,
                    StreamEnds const& output, StreamEnds const& errors) {
    Preparation ready{program.c_str(), {}, {input.theirs, output.theirs, errors.theirs}, ::getpid()};
    ready.arguments.push_back(const_cast<char*>(program.c_str()));
    for (std::string const& argument : arguments)
        ready.arguments.push_back(const_cast<char*>(argument.c_str()));
    ready.arguments.push_back(nullptr);
    return ready;
}

int CountEntries(char const* folder) noexcept {
    std::error_code failed;
    std::filesystem::directory_iterator const entries(folder, failed);
    return failed ? 0 : static_cast<int>(std::distance(begin(entries), end(entries)));
}

} // namespace

std::string ProcessEnd::Describe() const {
    if (kind == Kind::kExited)
        return "exited with status " + std::to_string(number);
    char const* const name = ::sigabbrev_np(number);
    char const* const meaning = ::sigdescr_np(number);
    std::string const text =
        std::string(meaning ? meaning : "a signal") + " (SIG" + (name ? name : std::to_string(number)) + ")";
    bool const fromOutside = number == SIGKILL || number == SIGTERM || number == SIGINT || number == SIGHUP;
    return (fromOutside ? "was ended from outside: " : "crashed: ") + text;
}

ChildProcess::ChildProcess(std::string const& program, std::vector<std::string> const& arguments) {
    StreamEnds input;
    StreamEnds output;
    StreamEnds errors;
    input.OpenForWriting();
    output.OpenForReading();
    errors.OpenForReading();
    Preparation const ready = Prepare(program, arguments, input, output, errors);
    pid_t const process = ::fork();
    if (process == 0)
        RunProgram(ready);
    if (process == -1)
        ThrowSystemError("there is no process to be had");
    mProcess = process;
    // Both sides do this, so that the group is there before anybody needs it.
    ::setpgid(process, process);
    // The C library's own word for this can't be called from C++ in every release.
    mEndDescriptor = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    if (mEndDescriptor == -1) {
        int const error = errno;
        Kill();
        ThrowSystemError("there is no descriptor of a process to be had", error);
    }
    mInput = std::exchange(input.ours, -1);
    mStreams = {std::exchange(output.ours, -1), std::exchange(errors.ours, -1)};
}

ChildProcess::~ChildProcess() {
    Kill();
    CloseInput();
    std::ranges::for_each(mStreams, Close);
    Close(mEndDescriptor);
}

bool ChildProcess::Send(std::string_view text) {
    if (mInput == -1)
        return false;
    ssize_t sent = -1;
    do
        sent = ::send(mInput, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    while (sent == -1 && errno == EINTR);
    if (sent > 0 && static_cast<std::size_t>(sent) < text.size())
        CloseInput(); // half a text is worse than none
    return sent >= 0 && static_cast<std::size_t>(sent) == text.size();
}

void ChildProcess::CloseInput() {
    Close(mInput);
}

bool ChildProcess::Read(Stream stream, std::string& text, std::size_t most) {
    int& descriptor = mStreams[static_cast<std::size_t>(stream)];
    std::array<char, 65536> buffer;
    while (descriptor != -1 && most > 0) {
        ssize_t const count = ::read(descriptor, buffer.data(), std::min(buffer.size(), most));
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
            most -= static_cast<std::size_t>(count);
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            Close(descriptor);
        } else if (errno == EAGAIN) {
            return true;
        }
    }
    return descriptor != -1;
}

std::optional<ProcessEnd> ChildProcess::TakeEnd() {
    Collect(false);
    return mEnd;
}

void ChildProcess::Kill() {
    if (mEnd || mProcess == -1)
        return;
    ::kill(-mProcess, SIGKILL);
    // Should it have left its group.
    ::kill(mProcess, SIGKILL);
    Collect(true);
}

// The group is ended before the number is given back, as long as nobody else can have it.
void ChildProcess::Collect(bool wait) {
    if (mEnd || mProcess == -1)
        return;
    siginfo_t info{};
    int const options = WEXITED | WNOWAIT | (wait ? 0 : WNOHANG);
    while (::waitid(P_PID, static_cast<id_t>(mProcess), &info, options) != 0) {
        if (errno != EINTR)
            return;
    }
    if (info.si_pid == 0)
        return;
    ::kill(-mProcess, SIGKILL);
    ::waitpid(mProcess, nullptr, 0);
    mEnd =
        ProcessEnd{info.si_code == CLD_EXITED ? ProcessEnd::Kind::kExited : ProcessEnd::Kind::kKilled, info.si_status};
}

std::string GetOwnProgram() {
    return "/proc/self/exe";
}

int GetProcessNumber() noexcept {
    return ::getpid();
}

int CountThreads() noexcept {
    return CountEntries("/proc/self/task");
}

int CountDescriptors() noexcept {
    return CountEntries("/proc/self/fd");
}

int GetMostDescriptors() noexcept {
    rlimit limit{};
    bool const told = ::getrlimit(RLIMIT_NOFILE, &limit) == 0;
    return told ? static_cast<int>(std::min<rlim_t>(limit.rlim_cur, std::numeric_limits<int>::max())) : 0;
}

bool HasChildren() noexcept {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace os
