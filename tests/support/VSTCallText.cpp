#include "support/VSTCallText.h"

#include "plugins/VSTFixtureConfiguration.h"

#include <sstream>

namespace vynfixtures {

using namespace vynaudiofilterhost::vst;

namespace {

enum Argument { kZero, kNull = kZero, kNumber, kPointer, kFree };

/// What belongs into a call's index, value, ptr and opt.
struct Shape {
    std::int32_t opcode;
    char const* name;
    Argument index, value, pointer, opt;
};

constexpr Shape kShapes[] = {
    {effOpen, "effOpen", kZero, kZero, kNull, kZero},
    {effClose, "effClose", kZero, kZero, kNull, kZero},
    {effSetProgram, "effSetProgram", kZero, kNumber, kNull, kZero},
    {effGetParamLabel, "effGetParamLabel", kNumber, kZero, kPointer, kZero},
    {effGetParamDisplay, "effGetParamDisplay", kNumber, kZero, kPointer, kZero},
    {effGetParamName, "effGetParamName", kNumber, kZero, kPointer, kZero},
    {effSetSampleRate, "effSetSampleRate", kZero, kZero, kNull, kNumber},
    {effSetBlockSize, "effSetBlockSize", kZero, kNumber, kNull, kZero},
    {effMainsChanged, "effMainsChanged", kZero, kNumber, kNull, kZero},
    {effEditGetRect, "effEditGetRect", kZero, kZero, kPointer, kZero},
    {effEditOpen, "effEditOpen", kZero, kZero, kPointer, kZero},
    {effEditClose, "effEditClose", kZero, kZero, kNull, kZero},
    {effEditIdle, "effEditIdle", kZero, kZero, kNull, kZero},
    {effGetChunk, "effGetChunk", kNumber, kZero, kPointer, kZero},
    {effSetChunk, "effSetChunk", kNumber, kNumber, kPointer, kZero},
    {effProcessEvents, "effProcessEvents", kZero, kZero, kPointer, kZero},
    {effCanBeAutomated, "effCanBeAutomated", kNumber, kZero, kNull, kZero},
    {effGetProgramNameIndexed, "effGetProgramNameIndexed", kNumber, kZero, kPointer, kZero},
    {effGetInputProperties, "effGetInputProperties", kNumber, kZero, kPointer, kZero},
    {effGetOutputProperties, "effGetOutputProperties", kNumber, kZero, kPointer, kZero},
    {effGetPlugCategory, "effGetPlugCategory", kZero, kZero, kNull, kZero},
    {effSetSpeakerArrangement, "effSetSpeakerArrangement", kZero, kFree, kPointer, kZero},
    {effGetEffectName, "effGetEffectName", kZero, kZero, kPointer, kZero},
    {effGetVendorString, "effGetVendorString", kZero, kZero, kPointer, kZero},
    {effVendorSpecific, "effVendorSpecific", kNumber, kNumber, kNull, kNumber},
    {effGetParameterProperties, "effGetParameterProperties", kNumber, kZero, kPointer, kZero},
    {effGetVstVersion, "effGetVstVersion", kZero, kZero, kNull, kZero},
    {effGetSpeakerArrangement, "effGetSpeakerArrangement", kZero, kPointer, kPointer, kZero},
    {effShellGetNextPlugin, "effShellGetNextPlugin", kZero, kZero, kPointer, kZero},
    {effStartProcess, "effStartProcess", kZero, kZero, kNull, kZero},
    {effStopProcess, "effStopProcess", kZero, kZero, kNull, kZero},
    {kVSTFixtureEntry, "VSTPluginMain", kZero, kZero, kNull, kZero},
    {kVSTFixtureMain, "main", kZero, kZero, kNull, kZero},
    {kVSTFixtureProcess, "process", kZero, kNumber, kFree, kZero},
    {kVSTFixtureProcessReplacing, "processReplacing", kZero, kNumber, kFree, kZero},
    {kVSTFixtureSetParameter, "setParameter", kNumber, kZero, kNull, kNumber},
    {kVSTFixtureGetParameter, "getParameter", kNumber, kZero, kNull, kZero},
};

Shape const* FindShape(std::int32_t opcode) {
    for (Shape const& shape : kShapes)
        if (shape.opcode == opcode)
            return &shape;
    return nullptr;
}

bool Fits(Argument argument, bool isZero) {
    return argument == kZero ? isZero : argument != kPointer || !isZero;
}

char const* PointerText(bool isNull) {
    return isNull ? "null" : "pointer";
}

} // namespace

std::string VSTOpcodeName(std::int32_t opcode) {
    Shape const* const shape = FindShape(opcode);
    return shape != nullptr ? shape->name : std::to_string(opcode);
}

std::string VSTCallText(VSTFixtureCall const& call) {
    bool const valueIsPointer = call.opcode == effSetSpeakerArrangement || call.opcode == effGetSpeakerArrangement;
    std::ostringstream text;
    text << VSTOpcodeName(call.opcode) << '(' << call.index << ", ";
    if (valueIsPointer)
        text << PointerText(call.value == 0);
    else
        text << call.value;
    text << ", " << PointerText(call.pointer == nullptr) << ", " << call.opt << ')';
    return text.str();
}

bool IsWellFormed(VSTFixtureCall const& call) {
    Shape const* const shape = FindShape(call.opcode);
    return shape != nullptr && Fits(shape->index, call.index == 0) && Fits(shape->value, call.value == 0) &&
           Fits(shape->pointer, call.pointer == nullptr) && Fits(shape->opt, call.opt == 0.0f);
}

} // namespace vynfixtures
