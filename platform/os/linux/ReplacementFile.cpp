#include "os/ReplacementFile.h"

#include "os/linux/NativePath.h"
#include "vyncore/strings/StringUtils.h"

#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace os {

namespace {

std::string const kTemporaryStart = ".vyn-";
std::string const kTemporaryEnd = ".tmp";

[[noreturn]] void ThrowSystemError(std::string const& what, int error = errno) {
    throw std::runtime_error(what + ": " + std::system_category().message(error));
}

// False when nothing is there, at the end of a link neither. Throws when it can't be replaced.
bool IsThere(std::filesystem::path const& path) {
    std::error_code error;
    std::filesystem::file_type const type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found)
        return false;
    if (error)
        ThrowSystemError("cannot be written", error.value());
    if (type == std::filesystem::file_type::directory)
        throw std::runtime_error("cannot be written: it is a folder");
    if (type != std::filesystem::file_type::regular)
        throw std::runtime_error("cannot be written: it is no ordinary file");
    if (::access(path.c_str(), W_OK) != 0)
        ThrowSystemError("cannot be written");
    return true;
}

// The library's own resolving ends at a link that leads to nothing, and the link would be replaced.
std::filesystem::path FollowLinks(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        std::filesystem::path const next = std::filesystem::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / next;
    }
    ThrowSystemError("cannot be written", ELOOP);
}

std::filesystem::path Canonical(std::filesystem::path const& path, char const* otherwise) {
    std::error_code error;
    std::filesystem::path canonical = std::filesystem::canonical(path, error);
    if (error)
        throw std::runtime_error(otherwise);
    return canonical;
}

std::filesystem::path ResolveTarget(std::string const& target) {
    if (target.empty() || target.back() == '/')
        throw std::runtime_error("cannot be written: this names no file");
    std::error_code error;
    std::filesystem::path path = std::filesystem::absolute(target, error);
    if (error)
        ThrowSystemError("cannot be written", error.value());
    if (IsThere(path))
        return Canonical(path, "cannot be written: it has no name");
    constexpr char const* kNoFolder = "cannot be written: its folder does not exist";
    path = FollowLinks(path);
    std::filesystem::path const folder = Canonical(path.parent_path(), kNoFolder);
    if (!std::filesystem::is_directory(folder, error))
        throw std::runtime_error(kNoFolder);
    return folder / path.filename();
}

// Processes that have nothing but the folder in common, and those that were ended, leave each other names to take.
std::string MakeTemporaryName() {
    auto const now = std::chrono::system_clock::now().time_since_epoch();
    return kTemporaryStart + std::to_string(::getpid()) + "-" +
           std::to_string(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()) + kTemporaryEnd;
}

// A process that has the number of one that was ended keeps the file from being removed, for now.
bool IsAbandoned(std::string const& name) {
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd))
        return false;
    pid_t process = 0;
    std::size_t const start = kTemporaryStart.size();
    auto const [end, error] = std::from_chars(name.data() + start, name.data() + name.size(), process);
    return error == std::errc() && process > 0 && *end == '-' && ::kill(process, 0) != 0 && errno == ESRCH;
}

int OpenTemporary(std::filesystem::path const& target, std::string& temporary,
                  ReplacementFile::NameObserver const& observer) {
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        temporary = target.parent_path() / MakeTemporaryName();
        if (::access(temporary.c_str(), F_OK) == 0)
            continue;
        if (observer)
            observer(temporary);
        int const descriptor = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor != -1)
            return descriptor;
        if (errno != EEXIST)
            ThrowSystemError("cannot be written");
    }
    ThrowSystemError("cannot be written", EEXIST);
}

// As far as it goes: only some may give a file away, and some disks know no owners.
void TakeOver(std::string const& former, int descriptor) {
    struct stat status {};
    if (::stat(former.c_str(), &status) != 0)
        return;
    [[maybe_unused]] int const ignored = ::fchown(descriptor, status.st_uid, status.st_gid);
    static_cast<void>(::fchmod(descriptor, status.st_mode & 0777));
}

// File systems without a disk behind them answer EINVAL.
bool Flush(int descriptor) {
    int result = ::fsync(descriptor);
    while (result != 0 && errno == EINTR)
        result = ::fsync(descriptor);
    return result == 0 || errno == EINVAL;
}

// The new name is on the disk only when its folder is. Not every file system can do it, and the file itself is safe.
void FlushFolder(std::string const& file) {
    std::string const folder = std::filesystem::path(file).parent_path();
    int const descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1)
        return;
    static_cast<void>(Flush(descriptor));
    ::close(descriptor);
}

} // namespace

ReplacementFile::ReplacementFile(std::string const& target, NameObserver const& observer)
    : mTarget(ResolveTarget(target)) {
    mDescriptor = OpenTemporary(mTarget, mTemporary, observer);
    TakeOver(mTarget, mDescriptor);
}

ReplacementFile::ReplacementFile(vyncore::UString const& target)
    : ReplacementFile(ToNativePath(target).value_or(std::string())) {}

ReplacementFile::~ReplacementFile() {
    if (mDescriptor != -1)
        ::close(mDescriptor);
    if (!mTemporary.empty())
        ::unlink(mTemporary.c_str());
}

void ReplacementFile::RemoveAbandoned(vyncore::UString const& folder) {
    std::error_code failed;
    for (std::filesystem::directory_iterator it(ToNativePath(folder).value_or(std::string()), failed), end;
         !failed && it != end; it.increment(failed)) {
        if (IsAbandoned(it->path().filename().native()))
            ::unlink(it->path().c_str());
    }
}

// NOLINTNEXTLINE(readability-make-member-function-const): it changes the file
bool ReplacementFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const count = ::write(mDescriptor, bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

vyncore::UString ReplacementFile::GetTemporaryPath() const {
    vyncore::UString path = vyncore::string::UTF8to16(mTemporary);
    return ToNativePath(path) == mTemporary ? path : vyncore::UString();
}

void ReplacementFile::Commit() {
    if (!Flush(mDescriptor))
        ThrowSystemError("could not be written");
    int const descriptor = std::exchange(mDescriptor, -1);
    // An interrupted one is closed all the same, and what is in it is on the disk.
    if (::close(descriptor) != 0 && errno != EINTR)
        ThrowSystemError("could not be written");
    if (::rename(mTemporary.c_str(), mTarget.c_str()) != 0)
        ThrowSystemError("could not be put in place");
    mTemporary.clear();
    FlushFolder(mTarget);
}

} // namespace os
