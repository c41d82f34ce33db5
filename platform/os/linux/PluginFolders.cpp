#include "os/PluginFolders.h"

#include "os/FileSystem.h"
#include "os/SpecialFolders.h"
#include "vyncore/strings/StringUtils.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace os {

namespace {

// In one form however it is written, for modules are told apart by their paths. An entry that is no absolute path means
// a folder below the working directory, as in every list of paths.
void AddEntry(std::string_view entry, std::vector<vyncore::UString>& folders) {
    std::error_code failed;
    std::filesystem::path whole = std::filesystem::absolute(std::filesystem::path(entry), failed).lexically_normal();
    if (entry.empty() || failed)
        return;
    if (!whole.has_filename() && whole.has_relative_path())
        whole = whole.parent_path();
    folders.push_back(vyncore::string::UTF8to16(whole.native()));
}

std::vector<vyncore::UString> SplitPathList(std::string_view list) {
    std::vector<vyncore::UString> folders;
    while (!list.empty()) {
        std::string_view const entry = list.substr(0, list.find(':'));
        AddEntry(entry, folders);
        list.remove_prefix(entry.size() < list.size() ? entry.size() + 1 : entry.size());
    }
    return folders;
}

} // namespace

std::vector<vyncore::UString> GetVST3Folders() {
    if (char const* const chosen = std::getenv("VST3_PATH"))
        return SplitPathList(chosen);
    std::vector<vyncore::UString> folders;
    if (vyncore::UString const home = GetHomeFolder(); !home.empty())
        folders.push_back(JoinPath(home, u".vst3"));
    folders.push_back(u"/usr/lib/vst3");
    folders.push_back(u"/usr/local/lib/vst3");
    return folders;
}

VSTFolders GetVSTFolders() {
    VSTFolders folders;
    if (char const* const chosen = std::getenv("VST_PATH"))
        folders.chosen = SplitPathList(chosen);
    folders.system = u"/usr/lib/vst";
    if (vyncore::UString const home = GetHomeFolder(); !home.empty())
        folders.own = JoinPath(home, u".vst");
    return folders;
}

vyncore::UString GetModuleExtension() {
    return u".so";
}

} // namespace os
