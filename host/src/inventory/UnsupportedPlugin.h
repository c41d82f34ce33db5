#pragma once

#include "vyncore/strings/UString.h"

namespace vynaudiofilterhost {

/// A module file that isn't supported, by its name without folders; an empty ID or version stands for any.
struct UnsupportedPlugin {
    vyncore::UString fileName;
    vyncore::UString uniqueID;
    vyncore::UString version;
};

} // namespace vynaudiofilterhost
