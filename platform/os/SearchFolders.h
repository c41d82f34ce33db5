#pragma once

#include "vyncore/strings/UString.h"

#include <vector>

namespace os {

/// From now on this process, and whatever it starts, looks for VST3 plug-ins in these folders and nowhere else
/// (os::GetVST3Folders). False, and nothing is changed, when the system can't pass on the name of one.
/// [main-thread]
bool ChooseVST3Folders(std::vector<vyncore::UString> const& folders);

} // namespace os
