#include "support/NoAllocationScope.h"

#include "support/AllocationWatch.h"

#include <utility>

namespace vyntest {

NoAllocationScope::NoAllocationScope(AtEnd atEnd) noexcept
    : mAtEnd(atEnd), mViolationsBefore(watch::Record().violations) {
    watch::ThreadRecord& record = watch::Record();
    if (record.openScopes == 0)
        record.firstCall = nullptr;
    ++record.openScopes;
}

NoAllocationScope::~NoAllocationScope() {
    --watch::Record().openScopes;
    if (mAtEnd == AtEnd::kFail && Violations() > 0)
        watch::Report(Describe());
}

int NoAllocationScope::Violations() const noexcept {
    return watch::Record().violations - mViolationsBefore;
}

std::string NoAllocationScope::Describe() const {
    watch::ThreadRecord& record = watch::Record();
    int const open = std::exchange(record.openScopes, 0);
    std::string text = std::to_string(Violations()) + " allocations, releases or locks on a thread that makes none";
    if (record.firstCall)
        text.append("; the first was ").append(record.firstCall).append(" in\n").append(watch::FirstStackText());
    record.openScopes = open;
    return text;
}

bool NoAllocationScope::WatchesLocks() noexcept {
    return watch::WatchesLocks();
}

} // namespace vyntest
