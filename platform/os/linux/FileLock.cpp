#include "os/FileLock.h"

#include "os/linux/NativePath.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <stdexcept>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>

namespace os {

FileLock::FileLock(vyncore::UString const& path) {
    std::string const native = ToNativePath(path).value_or(std::string());
    // Not to wait, should something else than a file lie there.
    mDescriptor = ::open(native.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (mDescriptor == -1)
        throw std::runtime_error("cannot be written: " + std::system_category().message(errno));
    mHeld = ::flock(mDescriptor, LOCK_EX | LOCK_NB) == 0;
    int const error = errno;
    if (!mHeld && error != EWOULDBLOCK) {
        ::close(mDescriptor);
        throw std::runtime_error("cannot be locked: " + std::system_category().message(error));
    }
    if (mHeld)
        LeaveNumber();
    else
        mHolder = ReadNumber();
}

FileLock::~FileLock() {
    ::close(mDescriptor);
}

// For whoever is refused; the lock holds without it as well.
void FileLock::LeaveNumber() const {
    std::string const number = std::to_string(::getpid()) + '\n';
    if (::ftruncate(mDescriptor, 0) == 0) [[maybe_unused]]
        ssize_t const written = ::pwrite(mDescriptor, number.data(), number.size(), 0);
}

int FileLock::ReadNumber() const {
    std::array<char, 32> text{};
    int number = 0;
    if (ssize_t const count = ::pread(mDescriptor, text.data(), text.size(), 0); count > 0)
        std::from_chars(text.data(), text.data() + count, number);
    return number;
}

} // namespace os
