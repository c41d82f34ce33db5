#pragma once

#include <cstddef>
#include <string>

namespace vynhost {

/// What the child of a scan is started with.
struct ScanWorkerRequest {
    std::size_t memory = 0; ///< in bytes, that modules may take; 0 for as much as there is
};

/// The name of the command that runs the child.
inline constexpr char const* kScanWorkerCommand = "scan-worker";

/// A line of standard input that asks the child for a module; `locator` is its text form.
/// [any-thread]
std::string MakeScanRequest(std::string const& locator);

/// The child of a scan: takes the modules that its standard input names, line by line, opens, describes and unloads
/// each, and answers on standard output in ScanFrames. What a module does to the process is the parent's affair. Ends
/// the process, with status 0, at the end of its input, and early when a module has left the process unfit for others.
/// [main-thread]
[[noreturn]] void RunScanWorker(ScanWorkerRequest const& request);

} // namespace vynhost
