#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace vynfixtures {

inline constexpr int kFixtureMaxBuses = 8;
inline constexpr int kFixtureMaxSpecialParameters = 16;
inline constexpr int kFixtureMaxLists = 4;

/// What a fixture does wrong, as bits of FixtureConfiguration::faults.
enum class FixtureFault : unsigned {
    NullFactory,
    FactoryInfoFails,
    ClassInfoFails, ///< for every class
    NegativeClassCount,
    ComponentCreationFails,
    ComponentCreationNull, ///< success, but no object
    ComponentInitializeFails,
    NoAudioProcessor,
    ControllerClassIdFails,
    ControllerCreationFails,
    ControllerCreationNull,
    ControllerInitializeFails,
    ProcessThrows,
    ProcessThrowsInt,
    ProcessFails,
    UnterminatedTexts,      ///< 128 units without a 0: buses, parameters, programs, value texts
    UnterminatedClassTexts, ///< factory and class infos
    ComponentGetStateFails, ///< after it wrote its bytes
    ControllerGetStateFails,
    SetStateFails, ///< setState and setComponentState, after they took the bytes
    ProgramNameFails,
};

/// What setBusArrangements does.
enum class FixtureBusAnswer : int {
    Accept,        ///< takes every arrangement
    Refuse,        ///< answers false and stays as it was
    MonoOnly,      ///< every bus turns mono; true only when that was asked
    StereoOnly,    ///< every bus turns stereo; true only when that was asked
    SymmetricOnly, ///< accepts when the first input is the first output, else refuses
    AcceptNothing, ///< answers true and stays as it was
};

/// Copies a text into a field, cut to leave room for the 0.
template <class Char, std::size_t N>
constexpr void SetFixtureText(Char (&field)[N], std::basic_string_view<Char> text) {
    for (std::size_t place = 0; place < N; ++place)
        field[place] = place < text.size() && place < N - 1 ? text[place] : Char{};
}

struct FixtureBus {
    std::uint64_t arrangement = 3;
    int type = 0; ///< 0 main, 1 auxiliary
    unsigned flags = 1;
    bool infoFails = false;
    bool arrangementFails = false;
    char16_t name[128] = {};

    static constexpr FixtureBus Make(std::uint64_t arrangement, std::u16string_view name = {}, int type = 0) {
        FixtureBus bus{.arrangement = arrangement, .type = type};
        SetFixtureText(bus.name, name);
        return bus;
    }
};

/// A parameter that differs from the ordinary ones (see FixtureConfiguration::parameterCount).
struct FixtureParameter {
    int index = 0;
    unsigned id = 0;
    int flags = 1;
    int stepCount = 0;
    int unit = 0;
    double defaultValue = 0.5;
    char16_t title[64] = {};
    char16_t units[16] = {};
};

/// `size` bytes: `bytes` over and over.
struct FixtureBlob {
    int size = 0;
    unsigned char bytes[64] = {};
};

struct FixtureMidiAssignment {
    int controller = -1;
    unsigned id = 0;
};

/// A rectangle as views state it. It may be empty, or any nonsense.
struct FixtureRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend bool operator==(FixtureRect const&, FixtureRect const&) = default;
};

/// How the view of a fixture's controller behaves.
struct FixtureViewConfiguration {
    bool present = false; ///< false: createView gives null
    FixtureRect size = {0, 0, 400, 300};
    bool sizeFails = false; ///< getSize, which leaves the rectangle alone
    bool attachedFails = false;

    FixtureRect resizeInAttached = {}; ///< what attached asks the frame for; all 0: nothing
    FixtureRect resizeInOnSize = {};   ///< what onSize asks for in its turn; all 0: nothing
    int resizesInOnSize = 1;           ///< how often it does so; -1: every time

    /// While it is attached the view has a timer of a millisecond and a pipe with a byte in it registered with the run
    /// loop of its frame. Their handlers are the module's own, and outlive the view.
    bool usesRunLoop = false;
    bool readsPipe = true;       ///< the pipe's handler takes the byte out
    bool leavesHandlers = false; ///< removed unregisters nothing
};

/// How a fixture module behaves, set before the host loads it or makes an object of it. A plain record, copied whole;
/// as constructed it is a faultless stereo effect with one parameter, the gain.
/// Counts may be negative or absurd: they are reported as they stand.
struct FixtureConfiguration {
    std::uint64_t faults = 0;
    int processFaultAt = -1; ///< the process call since setActive(1) that does wrong; -1: each
    char throwIn[48] = "";   ///< the call that throws, such as "Controller.getState"; "" for none
    int throwFrom = 1;       ///< which of these calls is the first to throw, counted from 1 since this was set

    char subCategories[128] = "Fx";
    char vendor[64] = "Fixture Works";
    char sdkVersion[64] = "VST 3.6.8";
    int factoryLevel = 3;    ///< 1: IPluginFactory alone, 2: IPluginFactory2, 3: IPluginFactory3
    int otherClassCount = 1; ///< classes of another category; the first one is the controller

    int inputCount = 1;
    int outputCount = 1;
    FixtureBus inputs[kFixtureMaxBuses] = {FixtureBus::Make(3, u"Input")};
    FixtureBus outputs[kFixtureMaxBuses] = {FixtureBus::Make(3, u"Output")};
    int eventInputCount = 0;
    int eventOutputCount = 0;
    FixtureBusAnswer busAnswer = FixtureBusAnswer::Accept;

    /// Parameter i has ID i, title "Parameter i", unit 0, the flag 1, no steps and default 0.5 unless `special` lists
    /// it. ID 0 is the gain: 2 * value.
    int parameterCount = 1;
    double plainLow = 0.0; ///< plain values run from here
    double plainHigh = 100.0;
    int specialCount = 0;
    FixtureParameter special[kFixtureMaxSpecialParameters] = {};

    bool unitInfo = false;
    int unitCount = 1;
    int rootUnitIndex = 0;     ///< the unit at this index is the root (ID 0); the others have ID 100 + index
    int rootProgramListId = 0; ///< -1: the root unit has no list
    int programListCount = 0;  ///< list i has ID i; its program j is called "List i Program j"
    int programCounts[kFixtureMaxLists] = {};
    bool midiMapping = false;
    FixtureMidiAssignment midiAssignments[4] = {};

    unsigned latency = 0;
    bool delayAudio = false; ///< the output comes `latency` samples late
    unsigned tail = 0;
    bool nullDsp = false; ///< process touches no audio
    bool logging = true;  ///< false: no log and no snapshot of process, for benchmarks
    bool silenceFlags = true;

    bool stateHoldsGain = true; ///< the component's state is the gain value, 8 bytes; else componentState
    FixtureBlob componentState = {};
    FixtureBlob controllerState = {};

    int outputPointCount = 0; ///< points of parameter 0 per process call: offset k, value k / 1024

    bool performEditInProcess = false; ///< performEdit(0, 0.25) from each process call
    bool spoilsOutputs = false;        ///< process, at its end, takes the output buses out of the host's own data

    bool vendorInterfaces = false; ///< component, controller and processor answer for the vendor's
    bool vendorAnswer = true;      ///< what the vendor's processor says to everything
    int vendorFocus = 0;           ///< what the vendor's controller says to GainFocus and SetCurrentFocus
    char vendorName[64] = "";
    unsigned vendorNameLength = 0;    ///< as it is stated
    bool vendorNameTerminated = true; ///< false: a 'x' where the 0 belongs

    FixtureViewConfiguration view = {};

    FixtureConfiguration& Fail(FixtureFault fault) {
        faults |= std::uint64_t{1} << static_cast<unsigned>(fault);
        return *this;
    }

    bool Fails(FixtureFault fault) const { return ((faults >> static_cast<unsigned>(fault)) & 1) != 0; }

    FixtureConfiguration& ThrowIn(std::string_view call, int from = 1) {
        SetFixtureText(throwIn, call);
        throwFrom = from;
        return *this;
    }

    FixtureConfiguration& SetBuses(std::initializer_list<FixtureBus> in, std::initializer_list<FixtureBus> out) {
        inputCount = outputCount = 0;
        for (FixtureBus const& bus : in)
            inputs[inputCount++] = bus;
        for (FixtureBus const& bus : out)
            outputs[outputCount++] = bus;
        return *this;
    }

    double DefaultValue(unsigned id) const {
        for (int i = 0; i < specialCount; ++i)
            if (special[i].id == id)
                return special[i].defaultValue;
        return 0.5;
    }

    /// Appends a parameter; its ID is its index.
    FixtureParameter& AddParameter(int flags, std::u16string_view title, int stepCount = 0) {
        FixtureParameter& added = special[specialCount++];
        added = {.index = parameterCount, .id = static_cast<unsigned>(parameterCount)};
        added.flags = flags;
        added.stepCount = stepCount;
        SetFixtureText(added.title, title);
        ++parameterCount;
        return added;
    }

    /// A list of `count` programs at the root unit, with the program-change parameter that selects them.
    FixtureConfiguration& AddPrograms(int count) {
        unitInfo = true;
        programListCount = 1;
        programCounts[0] = count;
        AddParameter(0x8000 | 8 | 1, u"Program", count - 1);
        return *this;
    }

    FixtureConfiguration& AddBypass() {
        AddParameter(0x10000 | 1, u"Bypass", 1);
        return *this;
    }

    FixtureConfiguration& AddReadOnly() {
        AddParameter(2, u"Meter");
        return *this;
    }
};

} // namespace vynfixtures
