#pragma once

#include "plugins/VSTFixtureText.h"
#include "vynaudiofilterhost/VST/src/AEffect.h"

#include <cstdint>
#include <string_view>

namespace vynfixtures {

inline constexpr int kVSTFixtureMaxListed = 8;
inline constexpr int kVSTFixtureMaxPins = 16;
inline constexpr int kVSTFixtureMaxHostCalls = 16;

/// The calls into an effect that are no opcodes, in the numbering of VSTFixtureCall::opcode.
enum VSTFixtureOpcode : std::int32_t {
    kVSTFixtureNever = -100, ///< no call at all
    kVSTFixtureEntry = -1,   ///< VSTPluginMain
    kVSTFixtureMain = -2,    ///< the entry function of the name "main"
    kVSTFixtureProcess = -3,
    kVSTFixtureProcessReplacing = -4,
    kVSTFixtureSetParameter = -5,
    kVSTFixtureGetParameter = -6,
};

/// A parameter that differs from the ordinary ones.
struct VSTFixtureParameter {
    VSTFixtureText name = {};
    VSTFixtureText label = {};
    VSTFixtureText display = {};
    bool hasProperties = false; ///< effGetParameterProperties answers 1
    VSTFixtureText propertiesLabel = {};
    std::int32_t propertiesFlags = 0;
    std::int32_t minInteger = 0;
    std::int32_t maxInteger = 0;
    std::int32_t stepInteger = 0;
    bool canBeAutomated = true;
    float value = 0.5f;
};

/// A call of the host from inside one of the effect's own calls; what it answers is in the snapshot.
struct VSTFixtureHostCall {
    std::int32_t during = kVSTFixtureNever; ///< an effect opcode or a VSTFixtureOpcode
    std::int32_t opcode = 0;
    std::int32_t index = 0;
    std::intptr_t value = 0;
    float opt = 0.0f;
    char text[32] = "";         ///< what the host's `ptr` holds; "" leaves it full of '?'
    bool withoutEffect = false; ///< the effect pointer is null
};

/// What effGetSpeakerArrangement gives.
enum class VSTFixtureArrangements : int {
    None,       ///< answers 0
    Configured, ///< inputArrangement and outputArrangement
    Requested,  ///< what effSetSpeakerArrangement brought last
};

struct VSTFixtureArrangement {
    bool null = false;
    std::int32_t type = vynaudiofilterhost::vst::kSpeakerArrStereo;
    std::int32_t numChannels = 2; ///< as stated; the record has room for 16 speakers
};

/// What effGetChunk gives: `size` bytes, "chunk" over and over.
struct VSTFixtureChunk {
    bool holdsValues = true; ///< the values of the present program, in place of these bytes
    bool null = false;       ///< states the size, but hands out no bytes
    std::int32_t size = 0;
};

/// Counts that an effect takes on in one of its calls, before it answers; what is -100 stays.
struct VSTFixtureChange {
    std::int32_t during = kVSTFixtureNever;
    std::int32_t numInputs = -100;
    std::int32_t numOutputs = -100;
    std::int32_t numParams = -100;
    std::int32_t numPrograms = -100;
};

/// How the editor of a VST 2.x fixture behaves. What it asks of the host while it opens, closes or idles are host calls
/// of the configuration; that it has one at all is one of the effect's flags.
struct VSTFixtureEditorConfiguration {
    bool hasRect = true;       ///< false: effEditGetRect answers 1 and leaves the pointer as it is
    bool rectWhenOpen = false; ///< true: only between effEditOpen and effEditClose
    vynaudiofilterhost::vst::ERect rect = {.top = 0, .left = 0, .bottom = 300, .right = 400};
    std::int64_t openAnswer = 1;   ///< to effEditOpen
    std::int64_t vendorAnswer = 0; ///< to effVendorSpecific
};

/// How a VST 2.x fixture module behaves, set before the host makes an effect of it. A plain record, copied whole; as
/// constructed it is a faultless stereo effect with one parameter, the gain.
/// Counts may be negative or absurd: they are reported as they stand.
struct VSTFixtureConfiguration {
    std::int32_t throwIn = kVSTFixtureNever; ///< an effect opcode or a VSTFixtureOpcode
    int throwFrom = 1;                       ///< which of these calls is the first to throw, counted from 1
    bool nullEntry = false;                  ///< the entry function returns null

    std::int32_t magic = vynaudiofilterhost::vst::kEffectMagic;
    std::int32_t vstVersion = 2400;
    std::int32_t flags = vynaudiofilterhost::vst::effFlagsCanReplacing;
    std::int32_t numInputs = 2;
    std::int32_t numOutputs = 2;
    std::int32_t numParams = 1;
    std::int32_t numPrograms = 0;
    std::int32_t initialDelay = 0;
    std::uint32_t uniqueID = 1234567;
    std::int32_t category = vynaudiofilterhost::vst::kPlugCategEffect;
    VSTFixtureText name = "Fixture Effect";
    VSTFixtureText vendor = "Fixture Works";
    VSTFixtureChange change = {};

    /// A shell makes the effect that audioMasterCurrentId asks for, and itself (of uniqueID) when that is 0.
    bool isShell = false;
    bool endlessShell = false; ///< effShellGetNextPlugin answers 1 for ever
    int shellCount = 0;
    std::uint32_t shellIDs[kVSTFixtureMaxListed] = {};

    /// Parameter i has the name "Parameter i", the label "x", no properties and the value 0.5 unless it is listed; in
    /// program p > 0 all have p / 16. Parameter 0 is the gain: 2 * value.
    int listedParameters = 0;
    VSTFixtureParameter parameters[kVSTFixtureMaxListed] = {};
    /// Program i has the name "Program i" unless it is listed.
    int listedPrograms = 0;
    VSTFixtureText programs[kVSTFixtureMaxListed] = {};
    VSTFixtureChunk chunk = {};

    bool acceptsArrangement = false; ///< the answer to effSetSpeakerArrangement
    bool countsFollow = false;       ///< an arrangement that is accepted becomes numInputs and numOutputs
    VSTFixtureArrangements arrangements = VSTFixtureArrangements::None;
    VSTFixtureArrangement inputArrangement = {};
    VSTFixtureArrangement outputArrangement = {};
    int listedPins = 0; ///< inputs and outputs behind these give no properties
    std::int32_t inputPins[kVSTFixtureMaxPins] = {};
    std::int32_t outputPins[kVSTFixtureMaxPins] = {};

    VSTFixtureEditorConfiguration editor = {};

    int hostCallCount = 0;
    VSTFixtureHostCall hostCalls[kVSTFixtureMaxHostCalls] = {};
    bool ownThread = false; ///< a thread of the effect calls the host from the entry function to effClose
    bool logging = true;

    VSTFixtureConfiguration() = default;

    VSTFixtureParameter& AddParameter(std::string_view of) {
        VSTFixtureParameter& added = parameters[listedParameters++];
        added.name = of;
        numParams = listedParameters;
        return added;
    }

    VSTFixtureConfiguration& AddProgram(VSTFixtureText const& of) {
        programs[listedPrograms++] = of;
        numPrograms = listedPrograms;
        return *this;
    }

    VSTFixtureConfiguration& AddHostCall(VSTFixtureHostCall const& call) {
        hostCalls[hostCallCount++] = call;
        return *this;
    }

    VSTFixtureConfiguration& AddPins(std::int32_t input, std::int32_t output) {
        inputPins[listedPins] = input;
        outputPins[listedPins++] = output;
        return *this;
    }

    VSTFixtureConfiguration& SetChannels(std::int32_t inputs, std::int32_t outputs) {
        numInputs = inputs;
        numOutputs = outputs;
        return *this;
    }

    VSTFixtureConfiguration& ThrowIn(std::int32_t opcode, int from = 1) {
        throwIn = opcode;
        throwFrom = from;
        return *this;
    }

    /// Three effects; the number of the second is beyond the signed ones.
    static VSTFixtureConfiguration Shell() {
        VSTFixtureConfiguration configuration;
        configuration.isShell = true;
        for (std::uint32_t const id : {1111u, 3000000001u, 2222u})
            configuration.shellIDs[configuration.shellCount++] = id;
        return configuration;
    }
};

} // namespace vynfixtures
