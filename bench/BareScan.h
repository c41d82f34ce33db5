#pragma once

#include <string>
#include <vector>

namespace vynbench {

/// What looking through VST3 modules costs without a host around it: opens each module in this process, lists its
/// factory, makes and initialises each of its classes, and takes all down again. Returns how many classes were made.
int ScanBare(std::vector<std::string> const& modules);

} // namespace vynbench
