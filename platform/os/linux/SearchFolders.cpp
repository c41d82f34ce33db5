#include "os/SearchFolders.h"

#include "os/linux/NativePath.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace os {

bool ChooseVST3Folders(std::vector<vyncore::UString> const& folders) {
    constexpr char kSeparator = ':';
    std::string list;
    for (vyncore::UString const& folder : folders) {
        std::optional<std::string> const path = ToNativePath(folder);
        if (!path || path->find(kSeparator) != std::string::npos)
            return false;
        list += (list.empty() ? "" : std::string(1, kSeparator)) + *path;
    }
    return ::setenv("VST3_PATH", list.c_str(), 1) == 0;
}

} // namespace os
