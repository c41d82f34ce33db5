#pragma once

#include "plugins/FixtureConfiguration.h"

#include <cstdint>

namespace vynfixtures {

inline constexpr int kFixtureMaxChannels = 32;
inline constexpr int kFixtureMaxPoints = 256;
inline constexpr int kFixtureMaxEvents = 64;

struct FixturePoint {
    unsigned id;
    int offset;
    double value;
};

struct FixtureEvent {
    int bus, offset, type, channel, pitch;
    unsigned flags;
    float amount; ///< velocity or pressure
};

/// The buses of one direction as a process call brought them. Channel buffers run on through all buses.
struct FixtureBlockBuses {
    int count;
    bool present; ///< the pointer to the buses was not null
    int channels[kFixtureMaxBuses];
    std::uint64_t silence[kFixtureMaxBuses]; ///< before processing
    float const* buffers[kFixtureMaxChannels];
};

/// The facts of the last process call. Counts are the true ones; the arrays hold the first of them.
struct FixtureBlock {
    int numSamples;
    FixtureBlockBuses inputs, outputs;

    unsigned state;
    double sampleRate, projectTimeMusic, barPositionMusic, tempo;
    std::int64_t projectTimeSamples, systemTime;
    int timeSigNumerator, timeSigDenominator;

    bool hasInputChanges, hasInputEvents;
    int changeCount; ///< parameters that changed
    int pointCount;  ///< points of all of them
    FixturePoint points[kFixtureMaxPoints];
    int eventCount;
    FixtureEvent events[kFixtureMaxEvents];
};

/// Host interfaces that the context of `initialize` answered for, as bits.
enum FixtureHostInterface : unsigned {
    kHostApplication = 1,
    kComponentHandler = 2,
    kComponentHandler2 = 4,
    kComponentHandler3 = 8,
    kUnitHandler = 16,
    kVendorHost = 32,
    kRunLoop = 64,
};

/// What a fixture module has seen. Written by its calls without a lock: read it while no call runs.
struct FixtureSnapshot {
    FixtureBlock block;
    std::uint64_t requestedInputs[kFixtureMaxBuses]; ///< of the last setBusArrangements
    std::uint64_t requestedOutputs[kFixtureMaxBuses];
    FixtureBlob componentState; ///< what setState gave the component; the bytes are the first 64
    FixtureBlob controllerComponentState;
    FixtureBlob controllerState;
    unsigned componentHostAnswers; ///< FixtureHostInterface bits
    unsigned controllerHostAnswers;
    char16_t hostName[128]; ///< every unit '?' before the host wrote
    /// The host's createInstance during the last `initialize`, class and interface each being IMessage, IAttributeList,
    /// FUnknown or IHostApplication: bit 4 * class + interface.
    unsigned instancesMade, instancesRefused; ///< refused: kResultFalse and a null pointer
    int droppedCalls;                         ///< calls that the log had no room for
};

} // namespace vynfixtures
