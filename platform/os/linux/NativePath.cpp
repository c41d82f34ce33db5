#include "os/linux/NativePath.h"

#include "vyncore/strings/StringUtils.h"

namespace os {

std::optional<std::string> ToNativePath(vyncore::UString const& path) {
    if (path.empty() || path.find(u'\0') != vyncore::UString::npos)
        return std::nullopt;
    return vyncore::string::UTF16to8(path);
}

} // namespace os
