#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <thread>

namespace vynfixtures {

/// What of a fixture module was called. The component object is the audio processor as well.
enum class FixtureObject : int { Module, Factory, Component, Controller, View };

/// One call that the host made into a fixture module. A plain record that owns its texts, so that a copy outlives the
/// module.
///
/// `name` is the interface's own method name ("setActive", "process"), the entry point's ("ModuleEntry"), "created" and
/// "destroyed" for an object's ends, or "host:" and a method name for a call the other way. Arguments by name:
///
/// | name | argument | extra[0] | extra[1] | value | detail |
/// | --- | --- | --- | --- | --- | --- |
/// | process | numSamples | numInputs | parameter changes | projectTimeSamples | |
/// | setupProcessing | maxSamplesPerBlock | processMode | symbolicSampleSize | sampleRate | |
/// | setActive, setProcessing | 0 or 1 | | | | |
/// | activateBus, getBusCount, getBusInfo | index (count: direction) | media type | direction | state | |
/// | setBusArrangements | numIns | numOuts | | | |
/// | getBusArrangement | index | direction | | | |
/// | setParamNormalized, getParamNormalized | parameter ID | | | value | |
/// | setState, setComponentState, getState | bytes read or written | | | | |
/// | queryInterface | 1 when answered | | | | interface's name, or its ID in GUID form for the vendor's |
/// | setComponentHandler, connect, disconnect | 1 for a pointer, 0 for null | | | | |
/// | getMidiControllerAssignment | controller | channel | bus | | |
/// | createInstance | result | | | | "IComponent" or "IEditController" |
/// | the vendor's processor | first sample | number of samples | | | |
/// | releaseVendor | | | | | |
/// | destroyed | initialize calls without their terminate | | | | |
/// | attached | | parent window | | | platform type |
/// | onSize | | | | | left, top, right, bottom |
/// | onFDIsSet | 1 when it read a byte | | | | |
/// | SetBrightness | flag | | | brightness | |
/// | host:... | the host's result | the argument sent | | value sent | |
/// | others that take an index or an ID | that | | | | |
struct FixtureCall {
    FixtureObject object;
    int sequence; ///< counts from 0 since the log was cleared
    char name[32];
    char detail[40];
    bool hasArgument;
    std::int64_t argument;
    std::int64_t extra[2];
    double value;
    std::size_t thread; ///< FixtureThread() of the calling thread
};

/// The log holds this many calls; later ones are counted only.
inline constexpr int kFixtureLogCapacity = 8192;

/// The number of the calling thread as the log gives it.
/// [any-thread]
inline std::size_t FixtureThread() {
    return std::hash<std::thread::id>{}(std::this_thread::get_id());
}

} // namespace vynfixtures
