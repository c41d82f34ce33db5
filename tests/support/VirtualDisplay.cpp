#include "support/VirtualDisplay.h"

#include "os/Clock.h"
#include "os/WaitForDescriptors.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <vector>

namespace vyntest {

namespace {

constexpr std::uint64_t kPatienceNanos = 20'000'000'000;

// The first line of what the process writes; empty when it ends or takes too long.
std::string ReadLine(os::ChildProcess& process) {
    std::string text;
    std::uint64_t const deadline = os::GetMonotonicNanos() + kPatienceNanos;
    bool open = true;
    while (open && text.find('\n') == std::string::npos && os::GetMonotonicNanos() < deadline) {
        std::array const descriptors{process.GetDescriptor(os::ChildProcess::Stream::kOutput),
                                     process.GetEndDescriptor()};
        os::WaitForDescriptors(descriptors, deadline);
        open = process.Read(os::ChildProcess::Stream::kOutput, text, 64);
    }
    return text.substr(0, text.find('\n'));
}

} // namespace

VirtualDisplay::VirtualDisplay() {
    std::vector<std::string> const arguments{"Xvfb", "-displayfd", "1", "-noreset",    "-nolisten",
                                             "tcp",  "-screen",    "0", "1280x1024x24"};
    mServer.emplace("/usr/bin/env", arguments);
    if (std::string const number = ReadLine(*mServer); !number.empty())
        mName = ":" + number;
}

VirtualDisplay::~VirtualDisplay() {
    Kill();
}

void VirtualDisplay::Kill() {
    if (!mServer)
        return;
    mServer.reset();
    if (mName.empty())
        return;
    // A server that is killed leaves them behind.
    std::error_code ignored;
    std::filesystem::remove("/tmp/.X" + mName.substr(1) + "-lock", ignored);
    std::filesystem::remove("/tmp/.X11-unix/X" + mName.substr(1), ignored);
}

} // namespace vyntest
