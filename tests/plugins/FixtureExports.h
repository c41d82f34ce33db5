#pragma once

#include "plugins/CallLog.h"
#include "plugins/FixtureConfiguration.h"
#include "plugins/FixtureSnapshot.h"

namespace vynfixtures {

/// What FixtureExports::callHost calls, with the arguments it uses.
enum class FixtureHostCall : int {
    BeginEdit,        ///< id
    PerformEdit,      ///< id, value
    EndEdit,          ///< id
    RestartComponent, ///< id: the flags
    SendMessage,      ///< the controller makes a message with id in its attribute "number" and notifies its peer
};

/// callHost without a live controller, or without what the call needs of the host.
inline constexpr int kFixtureNoHost = -100;

/// The tests' own door into a fixture module: its export "FixtureEntry" returns this table.
struct FixtureExports {
    /// Takes effect for objects made from now on.
    void (*configure)(FixtureConfiguration const*);
    /// Fixtures made so far, and later ones, report this latency from their next getLatencySamples on.
    void (*setLatency)(unsigned samples);

    FixtureCall const* (*calls)(int* count);
    void (*clearCalls)();
    /// Calls `sink` for each call as well, while it runs, on its thread; null ends that. For calls during unloading.
    void (*setSink)(void (*sink)(FixtureCall const*));

    FixtureSnapshot const* (*snapshot)();
    /// Components, controllers and views that are not destroyed.
    int (*liveObjects)();
    /// The 16 bytes of the ID of the audio class `index`.
    unsigned char const* (*classId)(int index);
    /// References on the factory; GetPluginFactory itself hands one out.
    int (*factoryReferences)();

    /// Calls the host through the handler of the controller made last, on the calling thread; gives the host's result.
    int (*callHost)(FixtureHostCall call, unsigned id, double value);
};

using FixtureEntryFunction = FixtureExports const* (*)();

} // namespace vynfixtures
