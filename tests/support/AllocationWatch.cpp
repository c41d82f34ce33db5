#include "support/AllocationWatch.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <execinfo.h>

namespace vyntest::watch {
namespace {

// In the thread's static block: the general model would allocate the block at the first touch, from within malloc.
__attribute__((tls_model("initial-exec"))) constinit thread_local ThreadRecord tRecord;

void EndProcess(std::string const& message) {
    std::fprintf(stderr, "%s\n", message.c_str());
    std::abort();
}

Reporter gReporter = &EndProcess;
bool gWatchesLocks = false;

// The first backtrace of a process loads the unwinder, which allocates.
__attribute__((constructor)) void LoadUnwinder() {
    void* frame = nullptr;
    backtrace(&frame, 1);
}

} // namespace

ThreadRecord& Record() noexcept {
    return tRecord;
}

void Note(char const* call) noexcept {
    ThreadRecord& record = tRecord;
    if (record.openScopes == 0)
        return;
    ++record.violations;
    if (record.firstCall)
        return;
    record.firstCall = call;
    int const open = std::exchange(record.openScopes, 0);
    record.firstStackSize = backtrace(record.firstStack.data(), static_cast<int>(record.firstStack.size()));
    record.openScopes = open;
}

std::string FirstStackText() {
    ThreadRecord const& record = tRecord;
    std::string text;
    char** const lines = backtrace_symbols(record.firstStack.data(), record.firstStackSize);
    for (int frame = 0; lines && frame < record.firstStackSize; ++frame)
        text.append("  ").append(lines[frame]).append("\n");
    std::free(lines);
    return text;
}

void SetReporter(Reporter reporter) noexcept {
    gReporter = reporter;
}

void Report(std::string const& message) {
    gReporter(message);
}

void SetWatchesLocks() noexcept {
    gWatchesLocks = true;
}

bool WatchesLocks() noexcept {
    return gWatchesLocks;
}

} // namespace vyntest::watch
