#include "vynhost/ProgressLine.h"

#include "os/Console.h"

#include <algorithm>
#include <cstdio>

namespace vynhost {

ProgressLine::ProgressLine() : mVisible(os::IsErrorTerminal()), mNext(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() {
    if (mVisible)
        std::fputs("\r\033[K", stderr);
}

void ProgressLine::Show(double done) {
    constexpr std::chrono::milliseconds kDistance{100};
    auto const now = std::chrono::steady_clock::now();
    if (!mVisible || now < mNext)
        return;
    std::fprintf(stderr, "\rrendering %3d %%", static_cast<int>(std::clamp(done, 0.0, 1.0) * 100.0));
    std::fflush(stderr);
    mNext = now + kDistance;
}

} // namespace vynhost
