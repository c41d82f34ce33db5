#pragma once

#include <cstddef>
#include <cstdint>

namespace vynaudiofilterhost::vst {

/// The records and numbers of the VST 2.x interface, as far as this host speaks it. They cross the border to code that
/// others compiled: sizes and offsets are those of the 64-bit interface, and the assertions below hold them.

struct AEffect;

using DispatcherFunction = std::intptr_t (*)(AEffect*, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                             void* ptr, float opt);
/// `in[channel][sample]`, `out[channel][sample]`.
using ProcessFunction = void (*)(AEffect*, float** in, float** out, std::int32_t frames);
using SetParameterFunction = void (*)(AEffect*, std::int32_t index, float value);
using GetParameterFunction = float (*)(AEffect*, std::int32_t index);

/// How an effect calls its host; what the entry function is given.
using AudioMasterFunction = std::intptr_t (*)(AEffect*, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                              void* ptr, float opt);
/// The one function that a module exports.
using EntryFunction = AEffect* (*)(AudioMasterFunction);

/// What an effect is, from the entry function on; the effect owns it and changes it as it likes.
struct AEffect {
    std::int32_t magic;
    DispatcherFunction dispatcher;
    ProcessFunction process; ///< adds to what the outputs hold
    SetParameterFunction setParameter;
    GetParameterFunction getParameter;
    std::int32_t numPrograms;
    std::int32_t numParams;
    std::int32_t numInputs;
    std::int32_t numOutputs;
    std::int32_t flags;
    unsigned char unused1[20];
    std::int32_t initialDelay; ///< in samples
    unsigned char unused2[28];
    std::uint32_t uniqueID;
    unsigned char unused3[4];
    ProcessFunction processReplacing;
};

static_assert(offsetof(AEffect, magic) == 0);
static_assert(offsetof(AEffect, dispatcher) == 8);
static_assert(offsetof(AEffect, process) == 16);
static_assert(offsetof(AEffect, setParameter) == 24);
static_assert(offsetof(AEffect, getParameter) == 32);
static_assert(offsetof(AEffect, numPrograms) == 40);
static_assert(offsetof(AEffect, numParams) == 44);
static_assert(offsetof(AEffect, numInputs) == 48);
static_assert(offsetof(AEffect, numOutputs) == 52);
static_assert(offsetof(AEffect, flags) == 56);
static_assert(offsetof(AEffect, initialDelay) == 80);
static_assert(offsetof(AEffect, uniqueID) == 112);
static_assert(offsetof(AEffect, processReplacing) == 120);
static_assert(sizeof(AEffect) == 128);

inline constexpr std::int32_t kEffectMagic = 0x56737450; ///< "VstP"

enum EffectFlags : std::int32_t {
    effFlagsHasEditor = 0x1,
    effFlagsCanMono = 0x8,
    effFlagsCanReplacing = 0x10,
    effFlagsProgramChunks = 0x20,
    effFlagsIsSynth = 0x100,
};

enum EffectOpcode : std::int32_t {
    effOpen = 0,
    effClose = 1,
    effSetProgram = 2,
    effGetParamLabel = 6,
    effGetParamDisplay = 7,
    effGetParamName = 8,
    effSetSampleRate = 10,
    effSetBlockSize = 11,
    effMainsChanged = 12,
    effEditGetRect = 13,
    effEditOpen = 14,
    effEditClose = 15,
    effEditIdle = 19,
    effGetChunk = 23,
    effSetChunk = 24,
    effProcessEvents = 25,
    effCanBeAutomated = 26,
    effGetProgramNameIndexed = 29,
    effGetInputProperties = 33,
    effGetOutputProperties = 34,
    effGetPlugCategory = 35,
    effSetSpeakerArrangement = 42,
    effGetEffectName = 45,
    effGetVendorString = 47,
    effVendorSpecific = 50,
    effGetParameterProperties = 56,
    effGetVstVersion = 58,
    effGetSpeakerArrangement = 69,
    effShellGetNextPlugin = 70,
    effStartProcess = 71,
    effStopProcess = 72,
};

enum AudioMasterOpcode : std::int32_t {
    audioMasterAutomate = 0,
    audioMasterVersion = 1,
    audioMasterCurrentId = 2,
    audioMasterPinConnected = 4,
    audioMasterGetTime = 7,
    audioMasterIOChanged = 13,
    audioMasterSizeWindow = 15,
    audioMasterGetVendorString = 32,
    audioMasterGetProductString = 33,
    audioMasterGetVendorVersion = 34,
    audioMasterVendorSpecific = 35,
    audioMasterCanDo = 37,
    audioMasterGetLanguage = 38,
    audioMasterBeginEdit = 43,
    audioMasterEndEdit = 44,
};

enum PlugCategory : std::int32_t {
    kPlugCategEffect = 1,
    kPlugCategSynth = 2,
    kPlugCategAnalysis = 3,
    kPlugCategMastering = 4,
    kPlugCategSpacializer = 5,
    kPlugCategRoomFx = 6,
    kPlugSurroundFx = 7,
    kPlugCategRestoration = 8,
    kPlugCategOfflineProcess = 9,
    kPlugCategShell = 10,
    kPlugCategGenerator = 11,
};

/// The bytes that texts of an effect are given. The interface asks for far less; effects write far more.
inline constexpr std::size_t kEffectTextBytes = 256;
inline constexpr std::size_t kParameterTextBytes = 128;
inline constexpr std::size_t kProgramNameBytes = 73;

struct VstMidiEvent {
    std::int32_t type;
    std::int32_t byteSize;
    std::int32_t deltaFrames; ///< place in the block, in samples
    std::int32_t flags;
    std::int32_t noteLength;
    std::int32_t noteOffset;
    unsigned char midiData[4];
    std::int8_t detune;
    unsigned char noteOffVelocity;
    unsigned char reserved1;
    unsigned char reserved2;
};

static_assert(sizeof(VstMidiEvent) == 32);
static_assert(offsetof(VstMidiEvent, midiData) == 24);

inline constexpr std::int32_t kVstMidiType = 1;
inline constexpr std::int32_t kVstMidiEventIsRealtime = 1;

/// The head of a block of events; pointers to `numEvents` events follow it.
struct VstEvents {
    std::int32_t numEvents;
    std::intptr_t reserved;
};

static_assert(offsetof(VstEvents, reserved) == 8);
static_assert(sizeof(VstEvents) == 16);

struct VstTimeInfo {
    double samplePos;
    double sampleRate;
    double nanoSeconds;
    double ppqPos; ///< in quarter notes
    double tempo;  ///< in quarter notes a minute
    double barStartPos;
    double cycleStartPos;
    double cycleEndPos;
    std::int32_t timeSigNumerator;
    std::int32_t timeSigDenominator;
    std::int32_t smpteOffset;
    std::int32_t smpteFrameRate;
    std::int32_t samplesToNextClock;
    std::int32_t flags;
};

static_assert(sizeof(VstTimeInfo) == 88);
static_assert(offsetof(VstTimeInfo, timeSigNumerator) == 64);

enum VstTimeInfoFlags : std::int32_t {
    kVstTransportChanged = 0x1,
    kVstTransportPlaying = 0x2,
    kVstNanosValid = 0x100,
    kVstPpqPosValid = 0x200,
    kVstTempoValid = 0x400,
    kVstBarsValid = 0x800,
    kVstTimeSigValid = 0x2000,
};

struct VstSpeakerProperties {
    float azimuth; ///< in radians
    float elevation;
    float radius;
    float reserved;
    char name[64];
    std::int32_t type;
    unsigned char future[28];
};

static_assert(sizeof(VstSpeakerProperties) == 112);
static_assert(offsetof(VstSpeakerProperties, type) == 80);

/// Room for eight speakers; a record of more goes on behind its end.
struct VstSpeakerArrangement {
    std::int32_t type;
    std::int32_t numChannels;
    VstSpeakerProperties speakers[8];
};

static_assert(sizeof(VstSpeakerArrangement) == 904);
static_assert(offsetof(VstSpeakerArrangement, speakers) == 8);

enum VstSpeakerArrangementType : std::int32_t {
    kSpeakerArrUserDefined = -2,
    kSpeakerArrMono = 0,
    kSpeakerArrStereo = 1,
    kSpeakerArr51 = 15,
    kSpeakerArr71Music = 23,
};

struct VstPinProperties {
    char label[64];
    std::int32_t flags;
    std::int32_t arrangementType;
    char shortLabel[8];
    unsigned char future[48];
};

static_assert(sizeof(VstPinProperties) == 128);
static_assert(offsetof(VstPinProperties, flags) == 64);

inline constexpr std::int32_t kVstPinIsStereo = 0x2;

/// Where an editor lies in its window, in pixels.
struct ERect {
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

static_assert(sizeof(ERect) == 8);

struct VstParameterProperties {
    float stepFloat;
    float smallStepFloat;
    float largeStepFloat;
    char label[64];
    std::int32_t flags;
    std::int32_t minInteger;
    std::int32_t maxInteger;
    std::int32_t stepInteger;
    unsigned char unused[60];
};

static_assert(sizeof(VstParameterProperties) == 152);
static_assert(offsetof(VstParameterProperties, label) == 12);
static_assert(offsetof(VstParameterProperties, stepInteger) == 88);

enum VstParameterFlags : std::int32_t {
    kVstParameterIsSwitch = 0x1,
    kVstParameterUsesIntegerMinMax = 0x2,
    kVstParameterUsesIntStep = 0x8,
    kVstParameterCanRamp = 0x40,
};

} // namespace vynaudiofilterhost::vst
