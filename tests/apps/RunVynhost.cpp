#include "apps/RunVynhost.h"

#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <sys/wait.h>

namespace vyntest {

namespace {

std::string Quote(std::string const& text) {
    std::string quoted = "'";
    for (char const c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

ProgramResult RunVynhost(std::vector<std::string> const& arguments, std::string const& shell) {
    TemporaryFolder const home;
    std::string const out = home.Path() / "out";
    std::string const err = home.Path() / "err";
    // What real plug-ins leak would be a failure of the program under a sanitizer; and a crash is to be one.
    std::string command = "export ASAN_OPTIONS=detect_leaks=0:handle_segv=0 TSAN_OPTIONS=handle_segv=0; exec >" +
                          Quote(out) + " 2>" + Quote(err) + "; " + shell + " HOME=" + Quote(home.Path()) + " exec " +
                          Quote(VYNHOST_PROGRAM);
    for (std::string const& argument : arguments)
        command += " " + Quote(argument);
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), ReadText(out), ReadText(err)};
}

std::string GetVynhostPath() {
    return VYNHOST_PROGRAM;
}

} // namespace vyntest
