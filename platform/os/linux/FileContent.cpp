#include "os/FileContent.h"

#include "os/linux/NativePath.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace os {

namespace {

// What has been opened is looked at, and without waiting: a name may lead elsewhere a moment later.
class OpenFile {
public:
    explicit OpenFile(std::string const& path)
        : mDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    OpenFile(OpenFile const&) = delete;
    OpenFile& operator=(OpenFile const&) = delete;
    ~OpenFile() {
        if (mDescriptor != -1)
            ::close(mDescriptor);
    }

    std::optional<std::size_t> GetSize() const {
        struct stat status {};
        if (mDescriptor == -1 || ::fstat(mDescriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return static_cast<std::size_t>(status.st_size);
    }

    ssize_t Read(char* buffer, std::size_t size) const {
        ssize_t count = ::read(mDescriptor, buffer, size);
        while (count < 0 && errno == EINTR)
            count = ::read(mDescriptor, buffer, size);
        return count;
    }

private:
    int mDescriptor;
};

} // namespace

std::optional<std::string> ReadFileContent(vyncore::UString const& path, std::size_t most) {
    std::optional<std::string> const native = ToNativePath(path);
    if (!native)
        return std::nullopt;
    OpenFile const file(*native);
    std::optional<std::size_t> const size = file.GetSize();
    if (!size || *size > most)
        return std::nullopt;
    // The size is a first guess: some files say 0 and hold more, and one may grow meanwhile.
    std::string content(*size + 1, '\0');
    std::size_t filled = 0;
    for (ssize_t count = 1; count != 0; filled += static_cast<std::size_t>(count)) {
        if (filled == content.size())
            content.resize(2 * filled);
        count = file.Read(content.data() + filled, content.size() - filled);
        if (count < 0 || filled + static_cast<std::size_t>(count) > most)
            return std::nullopt;
    }
    content.resize(filled);
    return content;
}

} // namespace os
