#pragma once

#include "os/ModuleLoader.h"
#include "vyncore/strings/StringUtils.h"

#include <string>
#include <vector>

namespace vynbench {

/// Opens each module in this process, has the function look through it and closes it again. Returns the sum of what the
/// function returns; a module that can't be opened is passed over.
template <class ScanModule>
int OpenEachModule(std::vector<std::string> const& modules, ScanModule const& scanModule) {
    int made = 0;
    for (std::string const& path : modules) {
        std::string reason;
        HINSTANCE__* const module = os::OpenModule(vyncore::string::UTF8to16(path), reason);
        if (!module)
            continue;
        made += scanModule(module);
        os::CloseModule(module);
    }
    return made;
}

} // namespace vynbench
