#include "support/AllocationWatch.h"

#include <gtest/gtest.h>

namespace {

void FailRunningTest(std::string const& message) {
    ADD_FAILURE() << message;
}

[[maybe_unused]] bool const kInstalled = [] {
    vyntest::watch::SetReporter(&FailRunningTest);
    return true;
}();

} // namespace
