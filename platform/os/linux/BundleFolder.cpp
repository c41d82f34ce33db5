#include "os/BundleFolder.h"

#include "vyncore/strings/StringUtils.h"

#include <sys/utsname.h>

namespace os {

vyncore::UString GetBundleFolderName() {
    utsname system{};
    return uname(&system) == 0 ? vyncore::string::AsciiToUTF16(system.machine) + u"-linux" : vyncore::UString();
}

vyncore::UString GetBundleModuleExtension() {
    return u".so";
}

} // namespace os
