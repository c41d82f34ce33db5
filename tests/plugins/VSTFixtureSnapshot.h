#pragma once

#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <cstddef>
#include <cstdint>

namespace vynfixtures {

inline constexpr int kVSTFixtureMaxChannels = 256;
inline constexpr int kVSTFixtureMaxEvents = 512;
inline constexpr int kVSTFixtureMaxSpeakers = 16;
inline constexpr int kVSTFixtureMaxAnswers = 64;

/// The facts of the last audio call. The arrays hold as many channels as the effect says it has.
struct VSTFixtureBlock {
    std::int32_t frames;
    std::int32_t inputCount;
    std::int32_t outputCount;
    bool accumulates;
    int nullChannels; ///< pointers that were null
    float const* inputs[kVSTFixtureMaxChannels];
    float* outputs[kVSTFixtureMaxChannels];
    float firstOutputs[kVSTFixtureMaxChannels]; ///< the first sample of each before the effect wrote
};

/// The facts of the last effProcessEvents.
struct VSTFixtureEvents {
    int count;
    std::intptr_t reserved;
    vynaudiofilterhost::vst::VstMidiEvent events[kVSTFixtureMaxEvents];
};

/// One side of the last effSetSpeakerArrangement.
struct VSTFixtureRequest {
    bool null;
    std::int32_t type;
    std::int32_t numChannels;
    vynaudiofilterhost::vst::VstSpeakerProperties speakers[kVSTFixtureMaxSpeakers];
};

/// What the host answered to a call of a VSTFixtureHostCall.
struct VSTFixtureHostAnswer {
    std::int32_t during;
    std::int32_t opcode;
    std::int64_t answer;
    char buffer[64];                           ///< `ptr` after the call
    vynaudiofilterhost::vst::VstTimeInfo time; ///< behind an answer to audioMasterGetTime that is not 0
    std::size_t thread;
};

/// What a VST 2.x fixture module has seen. Written by its calls without a lock: read it while no call runs.
struct VSTFixtureSnapshot {
    VSTFixtureBlock block;
    VSTFixtureEvents events;
    VSTFixtureRequest requestedInput;
    VSTFixtureRequest requestedOutput;
    std::int64_t chunkSize; ///< of the last effSetChunk
    unsigned char chunk[256];
    int answerCount;
    VSTFixtureHostAnswer answers[kVSTFixtureMaxAnswers];
    int spoiltRecords; ///< effects in whose record the host wrote
    int droppedCalls;  ///< calls that the log had no room for
};

} // namespace vynfixtures
