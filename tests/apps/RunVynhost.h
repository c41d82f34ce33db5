#pragma once

#include <string>
#include <vector>

namespace vyntest {

struct ProgramResult {
    int status = -1; ///< exit status; 128 and the signal's number when a signal ended the program
    std::string out;
    std::string err;
};

/// Runs the vynhost that was built along with the tests, in a process of its own with an empty home folder, to its end.
/// @param shell  put in front of the command for the shell, such as "ulimit -f 8;"
/// [any-thread]
ProgramResult RunVynhost(std::vector<std::string> const& arguments, std::string const& shell = {});

/// The path of that vynhost.
/// [any-thread]
std::string GetVynhostPath();

} // namespace vyntest
