#include "vynhost/ProgressLine.h"

#include "vynhost/OneLine.h"

#include "os/Console.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vynhost {

ProgressLine::ProgressLine(std::string work)
    : mWork(std::move(work)), mVisible(os::IsErrorTerminal()), mNext(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() {
    if (mVisible)
        std::fputs("\r\033[K", stderr);
}

void ProgressLine::Show(double done, std::string const& detail) {
    constexpr std::chrono::milliseconds kDistance{100};
    auto const now = std::chrono::steady_clock::now();
    if (!mVisible || now < mNext)
        return;
    std::fprintf(stderr, "\r%s %3d %% %s\033[K", mWork.c_str(), static_cast<int>(std::clamp(done, 0.0, 1.0) * 100.0),
                 OnOneLine(detail).c_str());
    std::fflush(stderr);
    mNext = now + kDistance;
}

} // namespace vynhost
