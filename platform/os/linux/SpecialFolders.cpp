#include "os/SpecialFolders.h"

#include "os/FileSystem.h"
#include "vyncore/strings/StringUtils.h"

#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace os {

namespace {

// Relative entries are ignored: they would mean another folder after each change of the working directory.
vyncore::UString AbsoluteFolder(char const* text) {
    std::string_view folder(text ? text : "");
    if (!folder.starts_with('/'))
        return {};
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.remove_suffix(1);
    return vyncore::string::UTF8to16(folder);
}

vyncore::UString HomeFromAccount() {
    std::vector<char> buffer(16384);
    passwd record{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return AbsoluteFolder(found->pw_dir);
}

} // namespace

vyncore::UString GetCommonFilesFolder() {
    return u"/usr/lib";
}

vyncore::UString GetHomeFolder() {
    vyncore::UString const home = AbsoluteFolder(std::getenv("HOME"));
    return home.empty() ? HomeFromAccount() : home;
}

vyncore::UString GetPreferencesFolder() {
    vyncore::UString const folder = AbsoluteFolder(std::getenv("XDG_CONFIG_HOME"));
    if (!folder.empty())
        return folder;
    vyncore::UString const home = GetHomeFolder();
    return JoinPath(home, u".config");
}

vyncore::UString GetTemporaryFolder() {
    vyncore::UString const folder = AbsoluteFolder(std::getenv("TMPDIR"));
    return folder.empty() ? u"/tmp" : folder;
}

} // namespace os
