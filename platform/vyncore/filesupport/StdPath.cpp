#include "vyncore/filesupport/StdPath.h"

#include "vyncore/strings/StringUtils.h"

#include <string>

namespace vyncore::filesupport {

std::filesystem::path ToStdPath(UString const& path) {
    UTF8String const utf8 = string::UTF16to8(path);
    return {std::u8string(utf8.begin(), utf8.end())};
}

UString FromStdPath(std::filesystem::path const& path) {
    std::u8string const utf8 = path.u8string();
    return string::UTF8to16(std::string(utf8.begin(), utf8.end()));
}

} // namespace vyncore::filesupport
