#include "vynhost/WorkerLink.h"

#include "os/ChildProcess.h"
#include "os/Console.h"

#include <cstdlib>

namespace vynhost {

WorkerLink::WorkerLink() : mProcess(os::GetProcessNumber()) {
    os::SetInputAside();
}

void WorkerLink::Send(ScanFrameKind kind, std::string const& text) const {
    CheckIdentity();
    if (!os::WriteOutput(EncodeScanFrame(kind, text)))
        std::_Exit(EXIT_FAILURE);
}

std::optional<std::string> WorkerLink::Receive() const {
    CheckIdentity();
    std::string line;
    return os::ReadInputLine(line) ? std::optional(line) : std::nullopt;
}

void WorkerLink::CheckIdentity() const {
    if (os::GetProcessNumber() != mProcess)
        std::_Exit(EXIT_FAILURE);
}

} // namespace vynhost
