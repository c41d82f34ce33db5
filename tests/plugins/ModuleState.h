#pragma once

#include "plugins/FixtureExports.h"

#include <atomic>
#include <optional>

namespace vynfixtures {

/// What tells one fixture module from another; each module's entry points define theirs.
struct ModuleTraits {
    unsigned number; ///< part of the class IDs
    bool singleObject;
    int audioClasses;
};

extern ModuleTraits const kModuleTraits;

/// What a fixture module keeps between calls. Static, so that it is new each time the module is loaded.
struct ModuleState {
    FixtureConfiguration configuration;
    FixtureSnapshot snapshot{};
    std::atomic<unsigned> latency{0};
    std::atomic<int> liveObjects{0};
    std::atomic<int> throwingCalls{0}; ///< calls so far of the one that the configuration lets throw

    static ModuleState& Get();
};

/// The facts of a call beside its name; see FixtureCall.
struct CallFacts {
    std::optional<std::int64_t> argument = {};
    std::int64_t extra[2] = {};
    double value = 0.0;
    char const* detail = "";
};

/// Files a call. Takes no lock and allocates nothing; does nothing when logging is off. Throws what a call is told to
/// throw, after it is filed.
/// [any-thread]
void Record(FixtureObject object, char const* name, CallFacts const& facts = {});

FixtureCall const* RecordedCalls(int* count);
void ClearRecordedCalls();
void SetRecordSink(void (*sink)(FixtureCall const*));

} // namespace vynfixtures
