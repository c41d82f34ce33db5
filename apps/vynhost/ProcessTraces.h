#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// What the process was like when the object was made, and what has come since: the traces that a plug-in leaves
/// behind, which may do harm to those that come after it.
class ProcessTraces {
public:
    /// [main-thread]
    ProcessTraces();

    /// Whether threads, descriptors and child processes are as they were.
    /// [main-thread]
    bool IsClean() const;

    /// What there is more of: "2 threads". Waits for a moment, since threads that have ended are counted a little
    /// longer.
    /// [main-thread]
    std::vector<std::string> List() const;

private:
    int CountNewThreads() const;

    int mThreads;
    int mDescriptors;
};

} // namespace vynhost
