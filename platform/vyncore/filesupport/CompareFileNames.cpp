#include "vyncore/filesupport/CompareFileNames.h"

#include "os/FileNames.h"

namespace vyncore::filesupport {

int CompareFileNames(UString const& left, UString const& right) {
    return os::CompareFileNames(left, right);
}

UTF8String FileNameKey(UString const& path) {
    return os::FileNameKey(path);
}

} // namespace vyncore::filesupport
