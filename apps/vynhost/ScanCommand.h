#pragma once

#include "vynhost/ScanReport.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vynhost {

/// What the user asks of `vynhost scan`.
struct ScanRequest {
    std::vector<std::string> folders = {}; ///< empty for those that are searched as a rule
    bool all = false;                      ///< also modules that have not changed
    int jobs = 0;                          ///< children side by side; 0 for one for each processor
    double timeout = 20.0;                 ///< in seconds, for each module
    int memory = 0;                        ///< in MiB, that a module may take; 0 for half of the machine's
    bool json = false;
};

/// Finds plug-ins, opens the new ones in children of this program, and files what they are; returns the report to be
/// printed. Throws CommandError; what was finished by then is saved.
/// [main-thread]
std::string RunScan(ScanRequest const& request);

} // namespace vynhost
