#include "os/FileSystem.h"

#include "os/linux/NativePath.h"
#include "vyncore/strings/StringUtils.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace os {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

std::optional<struct stat> Look(vyncore::UString const& path) {
    std::optional<std::string> const native = ToNativePath(path);
    struct stat status {};
    if (!native || stat(native->c_str(), &status) != 0)
        return std::nullopt;
    return status;
}

FileKind KindOf(struct stat const& status) {
    if (S_ISREG(status.st_mode))
        return FileKind::kFile;
    return S_ISDIR(status.st_mode) ? FileKind::kDirectory : FileKind::kOther;
}

FileIdentity IdentityOf(struct stat const& status) {
    return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

std::int64_t NanosOf(timespec const& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::optional<DirectoryEntry> ReadEntry(int folder, std::string const& name) {
    vyncore::UString text = vyncore::string::UTF8to16(name);
    bool const isText = vyncore::string::UTF16to8(text) == name;
    struct stat status {};
    if (name == "." || name == ".." || !isText || fstatat(folder, name.c_str(), &status, 0) != 0)
        return std::nullopt;
    return DirectoryEntry{std::move(text), KindOf(status), IdentityOf(status)};
}

} // namespace

FileKind GetFileKind(vyncore::UString const& path) {
    std::optional<struct stat> const status = Look(path);
    return status ? KindOf(*status) : FileKind::kNone;
}

std::optional<FileIdentity> GetFileIdentity(vyncore::UString const& path) {
    std::optional<struct stat> const status = Look(path);
    return status ? std::optional(IdentityOf(*status)) : std::nullopt;
}

std::optional<FileStamp> GetFileStamp(vyncore::UString const& path) {
    std::optional<struct stat> const status = Look(path);
    if (!status)
        return std::nullopt;
    return FileStamp{static_cast<std::uint64_t>(status->st_size), NanosOf(status->st_mtim), NanosOf(status->st_ctim),
                     static_cast<std::uint64_t>(status->st_ino)};
}

std::vector<DirectoryEntry> ListDirectory(vyncore::UString const& path) {
    std::vector<DirectoryEntry> entries;
    std::optional<std::string> const native = ToNativePath(path);
    OpenFolder const folder(native ? opendir(native->c_str()) : nullptr);
    if (!folder)
        return entries;
    while (dirent const* found = readdir(folder.get())) {
        if (std::optional<DirectoryEntry> entry = ReadEntry(dirfd(folder.get()), found->d_name))
            entries.push_back(std::move(*entry));
    }
    std::sort(entries.begin(), entries.end(),
              [](DirectoryEntry const& left, DirectoryEntry const& right) { return left.name < right.name; });
    return entries;
}

vyncore::UString JoinPath(vyncore::UString const& folder, vyncore::UString const& name) {
    if (folder.empty())
        return {};
    return folder.back() == u'/' ? folder + name : folder + u'/' + name;
}

} // namespace os
