#include "apps/EditProcess.h"

#include "apps/RunVynhost.h"
#include "os/Clock.h"
#include "os/WaitForDescriptors.h"

#include <array>
#include <sys/syscall.h>
#include <unistd.h>

namespace vyntest {

namespace {

using Stream = os::ChildProcess::Stream;

constexpr double kNanosPerSecond = 1e9;

std::uint64_t FindDeadline(double seconds) {
    return os::GetMonotonicNanos() + static_cast<std::uint64_t>(seconds * kNanosPerSecond);
}

std::vector<std::string> MakeArguments(std::string const& home, std::string const& display,
                                       std::vector<std::string> const& arguments) {
    // What real plug-ins leak would be a failure of the program under a sanitizer.
    std::vector<std::string> all{
        "ASAN_OPTIONS=detect_leaks=0", "HOME=" + home, "DISPLAY=" + display, GetVynhostPath(), "edit", "--json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

} // namespace

EditProcess::EditProcess(std::string const& display, std::vector<std::string> const& arguments)
    : mProcess("/usr/bin/env", MakeArguments(mHome.Path(), display, arguments)) {}

nlohmann::json EditProcess::Await(std::string const& key, double seconds) {
    std::uint64_t const deadline = FindDeadline(seconds);
    bool goesOn = true;
    while (true) {
        while (std::optional<nlohmann::json> const line = TakeLine()) {
            if (line->contains(key))
                return line->at(key);
        }
        if (!goesOn)
            return nullptr;
        goesOn = ReadMore(deadline);
    }
}

std::optional<nlohmann::json> EditProcess::TakeLine() {
    std::size_t const end = mText.find('\n');
    if (end == std::string::npos)
        return std::nullopt;
    std::string const line = mText.substr(0, end);
    mText.erase(0, end + 1);
    return nlohmann::json::parse(line, nullptr, false);
}

bool EditProcess::ReadMore(std::uint64_t deadlineNanos) {
    if (os::GetMonotonicNanos() >= deadlineNanos)
        return false;
    constexpr std::size_t kMostBytes = 65536;
    os::WaitForDescriptors(std::array{mProcess.GetDescriptor(Stream::kOutput)}, deadlineNanos);
    return mProcess.Read(Stream::kOutput, mText, kMostBytes);
}

bool EditProcess::AwaitErrors(std::string const& text) {
    constexpr std::size_t kMostBytes = 65536;
    constexpr double kPatienceSeconds = 30.0;
    std::uint64_t const deadline = FindDeadline(kPatienceSeconds);
    std::string errors;
    while (errors.find(text) == std::string::npos) {
        os::WaitForDescriptors(std::array{mProcess.GetDescriptor(Stream::kErrors)}, deadline);
        if (!mProcess.Read(Stream::kErrors, errors, kMostBytes) || os::GetMonotonicNanos() >= deadline)
            break;
    }
    return errors.find(text) != std::string::npos;
}

void EditProcess::Signal(int number) const {
    ::syscall(SYS_pidfd_send_signal, mProcess.GetEndDescriptor(), number, nullptr, 0);
}

int EditProcess::AwaitEnd(double seconds) {
    os::WaitForDescriptors(std::array{mProcess.GetEndDescriptor()}, FindDeadline(seconds));
    auto const end = mProcess.TakeEnd();
    if (!end)
        return -1;
    return end->kind == os::ProcessEnd::Kind::kExited ? end->number : 128 + end->number;
}

} // namespace vyntest
