#include "vynhost/ProcessTraces.h"

#include "os/ChildProcess.h"

#include <chrono>
#include <thread>

namespace vynhost {

ProcessTraces::ProcessTraces() : mThreads(os::CountThreads()), mDescriptors(os::CountDescriptors()) {}

bool ProcessTraces::IsClean() const {
    return CountNewThreads() <= 0 && os::CountDescriptors() == mDescriptors && !os::HasChildren();
}

std::vector<std::string> ProcessTraces::List() const {
    std::vector<std::string> traces;
    auto const add = [&](int count, std::string const& what) {
        if (count > 0)
            traces.push_back(std::to_string(count) + " " + what + (count > 1 ? "s" : ""));
    };
    add(CountNewThreads(), "thread");
    // The system doesn't tell when no further one can be opened.
    if (int const descriptors = os::CountDescriptors(); descriptors == 0)
        traces.emplace_back("as many descriptors as there can be");
    else
        add(descriptors - mDescriptors, "descriptor");
    if (os::HasChildren())
        traces.emplace_back("a process");
    return traces;
}

int ProcessTraces::CountNewThreads() const {
    for (int turn = 0; turn < 5 && os::CountThreads() > mThreads; ++turn)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return os::CountThreads() - mThreads;
}

} // namespace vynhost
