#pragma once

#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost doctor`.
struct DoctorRequest {
    std::vector<std::string> plugins = {}; ///< paths, names, IDs or folders; empty for all that a scan would find
    int jobs = 0;                          ///< children side by side; 0 for one for each processor
    double timeout = 20.0;                 ///< in seconds, for each step of a plug-in
    int memory = 0;                        ///< in MiB, that a plug-in may take; 0 for half of the machine's
    bool json = false;
};

/// Examines plug-ins, each in children of this program, and returns the report to be printed when all are fine. Nothing
/// that is stored changes. Banned modules are left alone unless they are named. Throws FailedReport when one
/// misbehaves or could not be examined, or when the program is interrupted, and CommandError.
/// [main-thread]
std::string RunDoctor(DoctorRequest const& request);

} // namespace vynhost
