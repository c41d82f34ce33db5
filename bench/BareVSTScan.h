#pragma once

#include <string>
#include <vector>

namespace vynbench {

/// What looking through VST 2.x modules costs without a host around it: loads each module in this process, makes and
/// opens its effect, asks what it is called, by whom, of which version and category, and closes it again. Returns how
/// many effects were made.
int ScanBareVST(std::vector<std::string> const& modules);

} // namespace vynbench
