#include "os/Console.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace os {

namespace {

int theOutput = STDOUT_FILENO;
int theInput = STDIN_FILENO;
std::string theInputText; ///< read, and not given yet

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

void SetInputAside() {
    int const input = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    int const nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (input != -1 && nothing != -1 && ::dup2(nothing, STDIN_FILENO) != -1)
        theInput = input;
    if (nothing != -1)
        ::close(nothing);
}

bool ReadInputLine(std::string& line) {
    std::array<char, 4096> buffer;
    std::size_t end = theInputText.find('\n');
    while (end == std::string::npos) {
        ssize_t const count = ::read(theInput, buffer.data(), buffer.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        theInputText.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
        end = theInputText.find('\n');
    }
    line = theInputText.substr(0, end);
    theInputText.erase(0, end + 1);
    return true;
}

bool IsErrorTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace os
