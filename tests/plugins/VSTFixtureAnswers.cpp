#include "plugins/VSTFixtureEffect.h"
#include "plugins/VSTFixtureState.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace vynfixtures {

using namespace vynaudiofilterhost::vst;

namespace {

/// As many speakers as the record of the host has room for; those of a small one are all read, used or not.
void CopyRequest(void const* arrangement, VSTFixtureRequest& request) {
    request = {};
    request.null = arrangement == nullptr;
    if (request.null)
        return;
    auto const& given = *static_cast<VstSpeakerArrangement const*>(arrangement);
    request.type = given.type;
    request.numChannels = given.numChannels;
    int const count = std::clamp(given.numChannels, 8, kVSTFixtureMaxSpeakers);
    std::memcpy(request.speakers, given.speakers, sizeof(VstSpeakerProperties) * static_cast<std::size_t>(count));
}

void CopyRequest(VSTFixtureRequest const& request, VSTFixtureSpeakers& speakers) {
    speakers.arrangement.type = request.type;
    speakers.arrangement.numChannels = request.numChannels;
    std::memcpy(&speakers.arrangement.speakers, request.speakers, sizeof speakers.arrangement.speakers);
    std::memcpy(&speakers.further, request.speakers + 8, sizeof speakers.further);
}

void HandOut(void* pointer, VSTFixtureSpeakers* speakers) {
    *static_cast<VstSpeakerArrangement**>(pointer) = speakers != nullptr ? &speakers->arrangement : nullptr;
}

std::intptr_t WritePin(VSTFixtureConfiguration const& configuration, std::int32_t const* flags, std::int32_t index,
                       void* ptr) {
    if (index < 0 || index >= configuration.listedPins)
        return 0;
    auto& pin = *static_cast<VstPinProperties*>(ptr);
    std::memset(&pin, 'p', sizeof pin);
    pin.flags = flags[index];
    return 1;
}

} // namespace

VSTFixtureParameter const* VSTFixtureEffect::FindParameter(std::int32_t index) const {
    return index >= 0 && index < mConfiguration.listedParameters ? &mConfiguration.parameters[index] : nullptr;
}

std::intptr_t VSTFixtureEffect::AnswerOfEffect(std::int32_t opcode, void* ptr) {
    switch (opcode) {
    case effGetVstVersion:
        return mConfiguration.vstVersion;
    case effGetPlugCategory:
        return mConfiguration.category;
    case effGetEffectName:
        mConfiguration.name.WriteTo(static_cast<char*>(ptr));
        return 1;
    case effGetVendorString:
        mConfiguration.vendor.WriteTo(static_cast<char*>(ptr));
        return 1;
    case effShellGetNextPlugin:
        return NextOfShell(static_cast<char*>(ptr));
    case effProcessEvents:
        TakeEvents(ptr);
        return 1;
    default:
        return 0;
    }
}

std::intptr_t VSTFixtureEffect::NextOfShell(char* name) {
    VSTFixtureText("Sub Effect").WriteTo(name);
    if (mConfiguration.endlessShell)
        return 1;
    return mShellIndex < mConfiguration.shellCount ? mConfiguration.shellIDs[mShellIndex++] : 0;
}

std::intptr_t VSTFixtureEffect::AnswerOfParameter(std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                                  void* ptr) {
    VSTFixtureParameter const* const listed = FindParameter(index);
    auto* const buffer = static_cast<char*>(ptr);
    switch (opcode) {
    case effGetParamName:
        WriteVSTFixtureText(buffer, listed != nullptr ? &listed->name : nullptr, "Parameter", index);
        return 1;
    case effGetParamLabel:
        (listed != nullptr ? listed->label : VSTFixtureText("x")).WriteTo(buffer);
        return 1;
    case effGetParamDisplay:
        WriteVSTFixtureText(buffer, listed != nullptr ? &listed->display : nullptr, "Display", index);
        return 1;
    case effCanBeAutomated:
        return listed == nullptr || listed->canBeAutomated;
    case effGetParameterProperties:
        return GetProperties(index, ptr);
    default:
        return AnswerOfState(opcode, index, value, ptr);
    }
}

std::intptr_t VSTFixtureEffect::GetProperties(std::int32_t index, void* ptr) const {
    VSTFixtureParameter const* const listed = FindParameter(index);
    if (listed == nullptr || !listed->hasProperties)
        return 0;
    auto& properties = *static_cast<VstParameterProperties*>(ptr);
    listed->propertiesLabel.WriteTo(properties.label);
    properties.flags = listed->propertiesFlags;
    properties.minInteger = listed->minInteger;
    properties.maxInteger = listed->maxInteger;
    properties.stepInteger = listed->stepInteger;
    return 1;
}

std::intptr_t VSTFixtureEffect::AnswerOfState(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr) {
    switch (opcode) {
    case effSetProgram:
        mProgram = static_cast<int>(std::clamp<std::intptr_t>(value, 0, 15));
        return 1;
    case effGetProgramNameIndexed:
        WriteVSTFixtureText(static_cast<char*>(ptr),
                            index < mConfiguration.listedPrograms ? &mConfiguration.programs[index] : nullptr,
                            "Program", index);
        return 1;
    case effGetChunk:
        return GetChunk(static_cast<void**>(ptr));
    case effSetChunk:
        SetChunk(value, ptr);
        return 1;
    default:
        return AnswerOfBuses(opcode, index, value, ptr);
    }
}

std::intptr_t VSTFixtureEffect::GetChunk(void** bytes) {
    VSTFixtureChunk const& chunk = mConfiguration.chunk;
    static constexpr char text[] = {'c', 'h', 'u', 'n', 'k'};
    mChunk.clear();
    if (chunk.holdsValues)
        mChunk.assign(reinterpret_cast<unsigned char const*>(mValues[mProgram]),
                      reinterpret_cast<unsigned char const*>(mValues[mProgram] + 16));
    else if (!chunk.null)
        for (int place = 0; place < chunk.size; ++place)
            mChunk.push_back(static_cast<unsigned char>(text[place % 5]));
    *bytes = chunk.null ? nullptr : static_cast<void*>(mChunk.data());
    return chunk.holdsValues ? static_cast<std::intptr_t>(mChunk.size()) : chunk.size;
}

void VSTFixtureEffect::SetChunk(std::intptr_t size, void const* bytes) {
    VSTFixtureSnapshot& snapshot = VSTFixtureState::Get().snapshot;
    snapshot.chunkSize = size;
    auto const count = static_cast<std::size_t>(std::max<std::intptr_t>(size, 0));
    if (count > 0)
        std::memcpy(snapshot.chunk, bytes, std::min(count, sizeof snapshot.chunk));
    if (mConfiguration.chunk.holdsValues && count == sizeof mValues[0])
        std::memcpy(mValues[mProgram], bytes, sizeof mValues[0]);
}

std::intptr_t VSTFixtureEffect::AnswerOfBuses(std::int32_t opcode, std::int32_t index, std::intptr_t value, void* ptr) {
    switch (opcode) {
    case effGetInputProperties:
        return WritePin(mConfiguration, mConfiguration.inputPins, index, ptr);
    case effGetOutputProperties:
        return WritePin(mConfiguration, mConfiguration.outputPins, index, ptr);
    case effSetSpeakerArrangement:
        return SetArrangements(reinterpret_cast<void const*>(value), ptr);
    case effGetSpeakerArrangement:
        return GetArrangements(reinterpret_cast<void*>(value), ptr);
    default:
        return AnswerOfEditor(opcode, ptr);
    }
}

std::intptr_t VSTFixtureEffect::SetArrangements(void const* input, void const* output) {
    VSTFixtureSnapshot& snapshot = VSTFixtureState::Get().snapshot;
    CopyRequest(input, snapshot.requestedInput);
    CopyRequest(output, snapshot.requestedOutput);
    if (!mConfiguration.acceptsArrangement)
        return 0;
    CopyRequest(snapshot.requestedInput, mInputSpeakers);
    CopyRequest(snapshot.requestedOutput, mOutputSpeakers);
    mRequested[0] = input != nullptr;
    mRequested[1] = output != nullptr;
    if (mConfiguration.countsFollow) {
        numInputs = snapshot.requestedInput.numChannels;
        numOutputs = snapshot.requestedOutput.numChannels;
    }
    return 1;
}

std::intptr_t VSTFixtureEffect::GetArrangements(void* input, void* output) {
    if (mConfiguration.arrangements == VSTFixtureArrangements::None)
        return 0;
    bool hasInput = mRequested[0];
    bool hasOutput = mRequested[1];
    if (mConfiguration.arrangements == VSTFixtureArrangements::Configured) {
        hasInput = !mConfiguration.inputArrangement.null;
        hasOutput = !mConfiguration.outputArrangement.null;
        mInputSpeakers.arrangement.type = mConfiguration.inputArrangement.type;
        mInputSpeakers.arrangement.numChannels = mConfiguration.inputArrangement.numChannels;
        mOutputSpeakers.arrangement.type = mConfiguration.outputArrangement.type;
        mOutputSpeakers.arrangement.numChannels = mConfiguration.outputArrangement.numChannels;
    }
    HandOut(input, hasInput ? &mInputSpeakers : nullptr);
    HandOut(output, hasOutput ? &mOutputSpeakers : nullptr);
    return 1;
}

std::intptr_t VSTFixtureEffect::AnswerOfEditor(std::int32_t opcode, void* ptr) {
    switch (opcode) {
    case effEditGetRect:
        return GetEditorRect(static_cast<ERect**>(ptr));
    case effEditOpen:
        mEditorOpen = true;
        return mConfiguration.editor.openAnswer;
    case effEditClose:
        mEditorOpen = false;
        return 1;
    case effVendorSpecific:
        return mConfiguration.editor.vendorAnswer;
    default:
        return AnswerOfEffect(opcode, ptr);
    }
}

std::intptr_t VSTFixtureEffect::GetEditorRect(ERect** rect) {
    if (mConfiguration.editor.hasRect && (mEditorOpen || !mConfiguration.editor.rectWhenOpen)) {
        mEditorRect = mConfiguration.editor.rect;
        *rect = &mEditorRect;
    }
    return 1;
}

} // namespace vynfixtures
