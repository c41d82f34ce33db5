#include "os/Memory.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>

namespace os {

namespace {

std::size_t GetPageSize() noexcept {
    long const size = ::sysconf(_SC_PAGESIZE);
    return size > 0 ? static_cast<std::size_t>(size) : 4096;
}

} // namespace

std::size_t GetMachineMemory() noexcept {
    long const pages = ::sysconf(_SC_PHYS_PAGES);
    return pages > 0 ? static_cast<std::size_t>(pages) * GetPageSize() : 0;
}

// The sixth number in the file: pages that can be written and are nobody else's.
std::size_t GetOwnMemory() noexcept {
    constexpr int kPlace = 5;
    std::array<char, 256> buffer{};
    int const file = ::open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file == -1)
        return 0;
    ssize_t const count = ::read(file, buffer.data(), buffer.size());
    ::close(file);
    std::string_view text(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    for (int place = 0; place < kPlace && !text.empty(); ++place)
        text.remove_prefix(text.find(' ') == std::string_view::npos ? text.size() : text.find(' ') + 1);
    std::size_t pages = 0;
    std::from_chars(text.data(), text.data() + text.size(), pages);
    return pages * GetPageSize();
}

void LimitOwnMemory(std::size_t bytes) noexcept {
    rlimit limit{};
    if (::getrlimit(RLIMIT_DATA, &limit) != 0)
        return;
    // The upper limit stays, so that there can be a next time.
    limit.rlim_cur = std::min<rlim_t>(GetOwnMemory() + bytes, limit.rlim_max);
    ::setrlimit(RLIMIT_DATA, &limit);
}

// The block's place is at the end of the heap, where pieces are cut from once it is free again.
void ExpectMemory(std::size_t bytes) noexcept {
    constexpr int kMost = 1 << 30;
    ::mallopt(M_MMAP_THRESHOLD, kMost);
    ::mallopt(M_TRIM_THRESHOLD, kMost);
    ::mallopt(M_TOP_PAD, static_cast<int>(std::min<std::size_t>(bytes, kMost / 2)));
}

} // namespace os
