#include "os/ReplacementFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <limits.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace os {

namespace {

// Plug-ins that crash are caught as well; the file of a crashed process is as useless as that of an interrupted one.
constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

std::array<struct sigaction, kEndingSignals.size()> theFormerActions;
std::array<char, PATH_MAX> theTemporary;
pid_t theOwner = 0;

// Runs in the middle of anything: only calls that are safe there. A child that a plug-in has forked owns no file.
void RemoveAndEnd(int signalNumber) {
    if (::getpid() == theOwner)
        ::unlink(theTemporary.data());
    auto const place = std::ranges::find(kEndingSignals, signalNumber) - kEndingSignals.begin();
    ::sigaction(signalNumber, &theFormerActions[static_cast<std::size_t>(place)], nullptr);
    ::raise(signalNumber);
}

void RemoveOnSignals(std::string const& path) {
    std::ranges::copy(path, theTemporary.begin());
    theTemporary[path.size()] = '\0';
    theOwner = ::getpid();
    struct sigaction action {};
    action.sa_handler = RemoveAndEnd;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i) {
        ::sigaction(kEndingSignals[i], nullptr, &theFormerActions[i]);
        // What whoever started the process has set to be ignored stays so.
        if (theFormerActions[i].sa_handler != SIG_IGN)
            ::sigaction(kEndingSignals[i], &action, nullptr);
    }
}

void LeaveSignals() {
    for (std::size_t i = 0; i < kEndingSignals.size(); ++i)
        ::sigaction(kEndingSignals[i], &theFormerActions[i], nullptr);
}

[[noreturn]] void ThrowSystemError(std::string const& what, int error = errno) {
    throw std::runtime_error(what + ": " + std::system_category().message(error));
}

std::filesystem::path ResolveTarget(std::string const& target) {
    if (target.empty() || target.back() == '/')
        throw std::runtime_error("cannot be written: this names no file");
    std::error_code error;
    std::filesystem::path path = std::filesystem::absolute(target, error);
    if (!error)
        path = std::filesystem::weakly_canonical(path, error);
    if (error)
        ThrowSystemError("cannot be written", error.value());
    if (!std::filesystem::is_directory(path.parent_path(), error))
        throw std::runtime_error("cannot be written: its folder does not exist");
    std::filesystem::file_status const status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::directory)
        throw std::runtime_error("cannot be written: it is a folder");
    if (std::filesystem::exists(status) && status.type() != std::filesystem::file_type::regular)
        throw std::runtime_error("cannot be written: it is no ordinary file");
    if (std::filesystem::exists(status) && ::access(path.c_str(), W_OK) != 0)
        ThrowSystemError("cannot be written");
    return path;
}

// A signal must find the name before the file exists, or it would leave a file behind.
int OpenTemporary(std::filesystem::path const& target, std::string& temporary) {
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        std::string const name = ".vyn-" + std::to_string(::getpid()) + "-" + std::to_string(i) + ".tmp";
        temporary = target.parent_path() / name;
        if (temporary.size() >= theTemporary.size())
            ThrowSystemError("cannot be written", ENAMETOOLONG);
        if (::access(temporary.c_str(), F_OK) == 0)
            continue;
        RemoveOnSignals(temporary);
        int const descriptor = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor != -1)
            return descriptor;
        int const error = errno;
        LeaveSignals();
        if (error != EEXIST)
            ThrowSystemError("cannot be written", error);
    }
    ThrowSystemError("cannot be written", EEXIST);
}

// The new name is on the disk only when its folder is. Not every file system can do it, and the file itself is safe.
void FlushFolder(std::string const& file) {
    std::string const folder = std::filesystem::path(file).parent_path();
    int const descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1)
        return;
    static_cast<void>(::fsync(descriptor));
    ::close(descriptor);
}

} // namespace

ReplacementFile::ReplacementFile(std::string const& target) : mTarget(ResolveTarget(target)) {
    mDescriptor = OpenTemporary(mTarget, mTemporary);
    struct stat former {};
    if (::stat(mTarget.c_str(), &former) == 0)
        static_cast<void>(::fchmod(mDescriptor, former.st_mode & 0777));
}

ReplacementFile::~ReplacementFile() {
    if (mDescriptor != -1)
        ::close(mDescriptor);
    if (!mTemporary.empty())
        ::unlink(mTemporary.c_str());
    LeaveSignals();
}

void ReplacementFile::Commit() {
    // File systems without a disk behind them answer EINVAL.
    if (::fsync(mDescriptor) != 0 && errno != EINVAL)
        ThrowSystemError("could not be written");
    int const descriptor = std::exchange(mDescriptor, -1);
    if (::close(descriptor) != 0)
        ThrowSystemError("could not be written");
    if (::rename(mTemporary.c_str(), mTarget.c_str()) != 0)
        ThrowSystemError("could not be put in place");
    mTemporary.clear();
    FlushFolder(mTarget);
}

} // namespace os
