#include "os/Console.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace os {

namespace {

int theOutput = STDOUT_FILENO;

// Opened for reading: writing to what stands in for a closed stream still fails, as it should.
void OccupyClosedStreams() {
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF)
            static_cast<void>(::open("/dev/null", O_RDONLY));
    }
}

} // namespace

void PrepareConsole() {
    OccupyClosedStreams();
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    int const output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (output != -1 && ::dup2(STDERR_FILENO, STDOUT_FILENO) != -1)
        theOutput = output;
}

bool WriteOutput(std::string_view text) {
    while (!text.empty()) {
        ssize_t const written = ::write(theOutput, text.data(), text.size());
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            return false;
    }
    return true;
}

bool IsErrorTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace os
