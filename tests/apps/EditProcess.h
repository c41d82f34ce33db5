#pragma once

#include "os/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vyntest {

/// `vynhost edit --json` at work, with an empty home folder. The test owns it; it ends with the object.
/// [main-thread]
class EditProcess {
public:
    /// @param display    for the environment variable DISPLAY
    /// @param arguments  behind `edit --json`
    EditProcess(std::string const& display, std::vector<std::string> const& arguments);

    /// Waits for the next line of output that has the key, and returns what stands there. Null when there is none
    /// within the time, or none any more.
    nlohmann::json Await(std::string const& key, double seconds = 30.0);

    /// Waits for a text in what the program, or a module in it, writes to standard error. False when it doesn't come.
    bool AwaitErrors(std::string const& text);

    /// Sends a signal, such as SIGINT for Ctrl-C.
    void Signal(int number) const;

    /// Waits for the exit status; 128 and the signal's number when a signal ended the process, -1 when nothing did
    /// within the time.
    int AwaitEnd(double seconds = 30.0);

private:
    std::optional<nlohmann::json> TakeLine();
    bool ReadMore(std::uint64_t deadlineNanos);

    TemporaryFolder mHome;
    os::ChildProcess mProcess;
    std::string mText; ///< that was read, and not taken yet
};

} // namespace vyntest
