#pragma once

#include "vynhost/ScanFrame.h"

#include <optional>
#include <string>

namespace vynhost {

/// The end of the line to a WatchedProcess's parent that lies in the process itself. A module that forks leaves a
/// second process that believes to be the first: that one says nothing and ends as soon as it gets here.
class WorkerLink {
public:
    /// Takes standard input for itself; to be made once, before anything is loaded.
    /// [main-thread]
    WorkerLink();

    /// Ends the process when nobody listens any more.
    /// [main-thread]
    void Send(ScanFrameKind kind, std::string const& text = {}) const;

    /// Waits for the next line that the parent sends; empty when none will come.
    /// [main-thread]
    std::optional<std::string> Receive() const;

private:
    void CheckIdentity() const;

    int mProcess;
};

} // namespace vynhost
